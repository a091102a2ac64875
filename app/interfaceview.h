#pragma once

#include "driver/buffersizerule.h"

#include <QObject>

class InterfacePage;
class QVXDevice;
class Settings;

/// Shows on the Interface page what the device and the driver say, and lets the user choose the
/// buffer size. GUI thread only.
class InterfaceView : public QObject
{
    Q_OBJECT

public:
    /// All of them must outlive the object.
    /// @param organisation of the store in which the driver's settings are
    InterfaceView(
        Settings &settings, QVXDevice &device, InterfacePage &page, const QString &organisation);

    /// Shows what the device answered last, and asks it anew.
    void refresh();
    /// Reads the driver's buffer size again: somebody else may have changed it.
    void loadBufferSize();

private:
    void showBufferSize(int step);

    Settings &m_settings;
    QVXDevice &m_device;
    InterfacePage &m_page;
    driver::BufferSizeRule m_bufferSize;
};
