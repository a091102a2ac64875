#pragma once

#include "widgets/stepcontrol.h"

/// A knob of the equalizer or the compressor, 36 x 36 pixels, drawn by one of 21 images. It passes
/// on the gestures of the left mouse button and computes nothing. Its steps are positive for the
/// keys Up and Right and for the wheel turned away from the user. GUI thread only.
class DialControl : public StepControl
{
    Q_OBJECT

public:
    static constexpr int frameCount = 21;

    explicit DialControl(QWidget *parent = nullptr);

    int frame() const { return m_frame; }
    /// Shows a frame, clamped to 0 to 20. The pointer of frame 0 is at 7 o'clock and that of frame
    /// 20 at 5 o'clock; each frame is half an hour further.
    void setFrame(int frame);
    /// Shows the value as an arc around the knob, which follows smaller steps than the frames.
    /// @param from where the arc begins, 0 (lowest value) to 1 (highest value)
    /// @param to   where the arc ends; no arc is drawn if it is equal to `from`
    void setArc(double from, double to);
    /// Draws the arc in grey while what the knob sets is switched off.
    void setLit(bool lit);

signals:
    // contract: the names of these signals.
    void dialknob_Pressed(QMouseEvent *event);
    void dialknob_Moved(QMouseEvent *event);
    void dialknob_DoubleClicked(QMouseEvent *event);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    int m_frame = frameCount / 2;
    double m_arcFrom = 0;
    double m_arcTo = 0;
    bool m_lit = true;
};
