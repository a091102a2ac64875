#pragma once

#include "widgets/stepcontrol.h"

#include <memory>

/// A knob of the equalizer or the compressor, 36 x 36 pixels, one of 21 images. It passes the
/// gestures of the left mouse button on and computes nothing. Its steps are positive for more:
/// up, right, and the wheel turned away. GUI thread only.
class DialControl : public StepControl
{
    Q_OBJECT

public:
    static constexpr int frameCount = 21;

    explicit DialControl(QWidget *parent = nullptr);

    int frame() const { return m_frame; }
    /// Turns the pointer: 0 stands at 7 o'clock, 20 at 17, each frame half an hour on. Others
    /// count as the nearest of these.
    void setFrame(int frame);

signals:
    void dialknob_Pressed(QMouseEvent *event);
    void dialknob_Moved(QMouseEvent *event);
    void dialknob_DoubleClicked(QMouseEvent *event);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    struct Frames;
    static std::shared_ptr<Frames> sharedFrames();

    const std::shared_ptr<Frames> m_frames; ///< one set for all dials
    int m_frame = frameCount / 2;
};
