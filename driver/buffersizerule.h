#pragma once

#include "driver/driversettings.h"

class Settings;

namespace driver {

/// Stores and loads the user's choice of a buffer size. The size goes to the driver's settings and
/// not to the device, so it can be chosen without a device. GUI thread only.
class BufferSizeRule
{
public:
    /// @param settings must outlive the object
    /// @param organisation the organisation of the driver's settings
    BufferSizeRule(Settings &settings, const QString &organisation);

    /// Stores the size of a step for the driver and the step for the panel.
    void choose(int step);

    /// Returns the step of the size that is stored for the driver, and stores it for the panel. A
    /// size that is not offered is replaced by 256 in the driver's settings.
    int load();

private:
    Settings &m_settings;
    DriverSettings m_driver;
};

} // namespace driver
