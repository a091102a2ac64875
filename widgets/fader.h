#pragma once

#include "widgets/stepcontrol.h"

/// The cap of a fader, 20 x 30 pixels. It passes on the gestures of the left mouse button and
/// computes nothing; the view moves it. GUI thread only.
// contract: the names of the class and of its signals.
class fader : public StepControl
{
    Q_OBJECT

public:
    explicit fader(QWidget *parent = nullptr);

signals:
    void Faderknob_Pressed(QMouseEvent *event);
    void Faderknob_Moved(QMouseEvent *event);
    void Faderknob_DoubleClicked(QMouseEvent *event);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
};
