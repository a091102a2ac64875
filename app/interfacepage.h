#pragma once

#include "app/productinformation.h"

#include <QWidget>

class QLabel;
class QSlider;

/// The Interface page: the buffer size of the audio driver, and what the panel and the device are.
/// It shows what it is given; what its slider does is up to others. GUI thread only.
class InterfacePage : public QWidget
{
    Q_OBJECT

public:
    explicit InterfacePage(QWidget *parent = nullptr);

    /// The slider of the buffer size, a step each, and the text of its size. They live as long as
    /// the page.
    QSlider *bufferSizeSlider() const { return m_bufferSlider; }
    QLabel *bufferSizeLabel() const { return m_bufferSize; }

    /// @name What is said of the device
    ///@{
    void setFirmware(const QString &text);
    void setName(const QString &text);
    void setSampleRate(const QString &text);
    void setTrueBypass(const QString &text);
    ///@}

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
