#pragma once

#include "driver/driversettings.h"

class Settings;

namespace driver {

/// What the choice of a buffer size does. The size goes to the driver's settings, not to the
/// device: so it works without one. GUI thread only.
class BufferSizeRule
{
public:
    /// @param settings must outlive the object
    /// @param organisation of the store in which the driver's settings are
    BufferSizeRule(Settings &settings, const QString &organisation);

    /// Stores the size of a step for the driver, and the step for the panel.
    void choose(int step);

    /// The step of the size that the driver has, whoever has stored it. A size that is not offered
    /// becomes 256, in the driver's settings too. The panel's own step follows.
    int load();

private:
    Settings &m_settings;
    DriverSettings m_driver;
};

} // namespace driver
