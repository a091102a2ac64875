#pragma once

#include "driver/buffersizerule.h"
#include "mixer/identity.h"

#include <QObject>

class InterfacePage;
class QVXDevice;
class Settings;

/// Shows the state of the device and the driver on the Interface page, and lets the user choose the
/// buffer size. GUI thread only.
class InterfaceView : public QObject
{
    Q_OBJECT

public:
    /// Settings, device and page must outlive the object.
    /// @param organisation the organisation that the driver's settings are stored under
    InterfaceView(
        Settings &settings, QVXDevice &device, InterfacePage &page, const QString &organisation,
        QObject *parent);

    /// Whether the device answers, which refresh() shows. A device can be connected without
    /// answering. It is assumed to answer until this is called.
    void setAnswering(bool answers) { m_answers = answers; }

    /// Shows the device's last answers.
    void refresh();
    /// Reads the driver's buffer size again, because another program may have changed it, and shows
    /// it.
    void loadBufferSize();

private:
    void showBufferSize(int step);
    void showLatency();
    void showState(const mixer::Identity &identity);

    Settings &m_settings;
    QVXDevice &m_device;
    InterfacePage &m_page;
    driver::BufferSizeRule m_bufferSize;
    std::uint32_t m_sampleRate = 0; ///< in hertz, or 0 if unknown
    bool m_answers = true;
};
