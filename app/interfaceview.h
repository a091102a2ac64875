#pragma once

#include "driver/buffersizerule.h"

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
        Settings &settings, QVXDevice &device, InterfacePage &page, const QString &organisation);

    /// Shows the device's last answers and requests new ones.
    void refresh();
    /// Reads the driver's buffer size again, because another program may have changed it, and shows
    /// it.
    void loadBufferSize();

private:
    void showBufferSize(int step);

    Settings &m_settings;
    QVXDevice &m_device;
    InterfacePage &m_page;
    driver::BufferSizeRule m_bufferSize;
};
