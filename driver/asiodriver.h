#pragma once

#include "driver/asiohost.h"

#include <QString>

/// The interface's own audio driver, asked as an ASIO host asks it. It is loaded by the first
/// question and stays so while it answers. GUI thread only.
class AsioDriver
{
public:
    /// The host must outlive the object.
    explicit AsioDriver(AsioHost &host);
    AsioDriver(const AsioDriver &) = delete;
    AsioDriver &operator=(const AsioDriver &) = delete;

    /// The rate at which the driver runs, in hertz and with up to six digits: "48000",
    /// "1.4112e+06". Without the driver "No  ASIO  Driver". When the driver reports an error the
    /// text is that of the rate which it left, "0" as a rule, and the next question loads the
    /// driver anew.
    QString driverSampleRateText();

private:
    bool load();

    AsioHost &m_host;
    bool m_loaded = false;
};
