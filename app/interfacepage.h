#pragma once

#include "app/productinformation.h"

#include <QWidget>

class QLabel;
class QSlider;
class QVXDevice;

/// The firmware of the device, "1.02 0034" for version 102 and build 34, as it was read last; asks
/// anew. "" without a device, and after a request that failed.
QString firmwareVersion(QVXDevice &device);

/// The Interface page: the buffer size of the audio driver, and what the panel and the device are.
/// The page shows; what its slider does is up to the window. GUI thread only.
class InterfacePage : public QWidget
{
    Q_OBJECT

public:
    explicit InterfacePage(QWidget *parent = nullptr);

    /// The slider of the buffer size, a step each, and the text of its size. They live as long as
    /// the page.
    QSlider *bufferSizeSlider() const { return m_bufferSlider; }
    QLabel *bufferSizeLabel() const { return m_bufferSize; }

    /// Shows what the device answered last and asks it anew; "No Device" without one.
    /// @param trueBypass the option as it was sent to the device
    void refresh(QVXDevice &device, bool trueBypass);
    /// Shows the name that the device has just answered.
    void showName(QVXDevice &device);

    /// What the page says of panel and device, as it stands there.
    QVector<ProductInformation::Fact> facts() const;

    /// The Mixer page alone gives the window its size. So this page need not be laid out before it
    /// is shown, and the window opens sooner.
    QSize sizeHint() const override { return QSize(); }
    QSize minimumSizeHint() const override { return QSize(); }

private:
    void makeValues();
    QWidget *buildAudioDriver();

    QSlider *m_bufferSlider;
    QLabel *m_bufferSize;
    QLabel *m_software;
    QLabel *m_firmware;
    QLabel *m_device;
    QLabel *m_sampleRate;
    QLabel *m_trueBypass;
};
