#pragma once

#include "driver/asiohost.h"

#include <QString>

/// The interface's audio driver, queried through ASIO. The first query loads the driver. It stays
/// loaded until a query fails. GUI thread only.
// contract: nothing in the panel uses this query.
class AsioDriver
{
public:
    /// The host must outlive the object.
    explicit AsioDriver(AsioHost &host);
    AsioDriver(const AsioDriver &) = delete;
    AsioDriver &operator=(const AsioDriver &) = delete;

    /// Returns the driver's sample rate in hertz with up to six significant digits: "48000",
    /// "1.4112e+06". Returns "No  ASIO  Driver" if the driver cannot be loaded. If the driver
    /// reports an error, returns the rate that the driver left (usually "0"), and the next query
    /// loads the driver again.
    QString driverSampleRateText();

private:
    bool load();

    AsioHost &m_host;
    bool m_loaded = false;
};
