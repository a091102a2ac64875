#pragma once

#include <QWidget>

class QLabel;
class QVXDevice;

/// The Interface page: what the panel and the device are. GUI thread only.
class InterfacePage : public QWidget
{
    Q_OBJECT

public:
    explicit InterfacePage(QWidget *parent = nullptr);

    /// Shows what the device answered last and asks it anew; "No Device" without one.
    /// @param trueBypass the option as it was sent to the device
    void refresh(QVXDevice &device, bool trueBypass);

    /// The Mixer page alone gives the window its size. So this page need not be laid out before it
    /// is shown, and the window opens sooner.
    QSize sizeHint() const override { return QSize(); }
    QSize minimumSizeHint() const override { return QSize(); }

private:
    QLabel *m_firmware;
    QLabel *m_device;
    QLabel *m_trueBypass;
};
