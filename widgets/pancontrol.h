#pragma once

#include "widgets/stepcontrol.h"

/// The marker of a pan control, 16 x 12 pixels. It passes on the gestures of the left mouse button
/// and computes nothing; the view moves it. GUI thread only.
class PanControl : public StepControl
{
    Q_OBJECT

public:
    explicit PanControl(QWidget *parent = nullptr);

    /// Shows the image for the centre position if `centred` is true, else the ordinary image.
    void setCentred(bool centred);

signals:
    // contract: the names of these signals.
    void panknob_Pressed(QMouseEvent *event);
    void panknob_Moved(QMouseEvent *event);
    void panknob_Released(QMouseEvent *event);
    void panknob_DoubleClicked(QMouseEvent *event);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    bool m_centred = true;
};
