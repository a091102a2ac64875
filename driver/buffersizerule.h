#pragma once

#include "driver/driversettings.h"

class QLabel;
class QSlider;
class Settings;

namespace driver {

/// What the slider of the buffer size does. The size goes to the driver's settings, not to the
/// device: so it works without one. GUI thread only.
class BufferSizeRule
{
public:
    /// All of them must outlive the object.
    /// @param organisation of the store in which the driver's settings are
    /// @param label shows the size
    BufferSizeRule(Settings &settings, const QString &organisation, QSlider *slider, QLabel *label);
    BufferSizeRule(const BufferSizeRule &) = delete;
    BufferSizeRule &operator=(const BufferSizeRule &) = delete;

    /// What the slider has been set to: shows the step's size, and stores it for the driver and
    /// the step for the panel.
    void changed(int step);

    /// Sets the slider to the size that the driver has, whoever has stored it. A size that is not
    /// offered becomes 256, in the driver's settings too.
    void load();

private:
    Settings &m_settings;
    DriverSettings m_driver;
    QSlider *m_slider;
    QLabel *m_label;
};

} // namespace driver
