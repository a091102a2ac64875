#pragma once

#include "app/productinformation.h"
#include "driver/buffersize.h"
#include "widgets/lamp.h"

#include <QWidget>

#include <array>

class ClickLabel;
class QLabel;
class QSlider;

/// The Interface page: the buffer size of the audio driver, and the versions and state of panel and
/// device. It only shows what it is given; InterfaceView handles the slider. GUI thread only.
class InterfacePage : public QWidget
{
    Q_OBJECT

public:
    explicit InterfacePage(QWidget *parent = nullptr);

    /// The slider of the buffer size: its values are the steps of driver/buffersize.h. It lives as
    /// long as the page.
    QSlider *bufferSizeSlider() const { return m_bufferSlider; }
    /// The text of the buffer size. It lives as long as the page.
    QLabel *bufferSizeLabel() const { return m_bufferSize; }

    /// Highlights the size of a step on the slider's scale.
    void showStep(int step);
    /// Shows how long a buffer lasts.
    void setLatency(const QString &text);

    /// @name Texts about the device
    ///@{
    void setState(Lamp::State state, const QString &text);
    void setFirmware(const QString &text);
    void setName(const QString &text);
    void setSampleRate(const QString &text);
    void setTrueBypass(const QString &text);
    ///@}

    /// Returns the captions and values that the page shows, without the buffer size.
    QVector<ProductInformation::Fact> facts() const;

    /// Returns no size, because the Mixer page alone determines the window's size. So this page is
    /// laid out only when it is shown, and the window opens sooner.
    QSize sizeHint() const override { return QSize(); }
    QSize minimumSizeHint() const override { return QSize(); }

private:
    void makeValues();
    QWidget *buildAudioDriver();
    QLayout *buildScale();
    QWidget *buildDevice();
    QWidget *buildPanel();

    QSlider *m_bufferSlider;
    QLabel *m_bufferSize;
    QLabel *m_latency;
    std::array<ClickLabel *, driver::bufferStepCount> m_scale{};
    Lamp *m_lamp;
    QLabel *m_state;
    QLabel *m_software;
    QLabel *m_firmware;
    QLabel *m_device;
    QLabel *m_sampleRate;
    QLabel *m_trueBypass;
};
