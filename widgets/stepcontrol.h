#pragma once

#include <QLabel>

/// An image that stands for a value and is moved: what the fader cap, the pan marker and the dial
/// have in common beside the mouse. It takes the focus, shows that it has it, and turns wheel and
/// keys into steps; what a step does is up to those who listen. GUI thread only.
class StepControl : public QLabel
{
    Q_OBJECT

public:
    /// Where the value grows. Vertical: positions are rows, so up is a step of -1.
    /// Horizontal: positions are columns, right and up are a step of +1.
    enum class Travel { Vertical, Horizontal };

    StepControl(Travel travel, QWidget *parent);

    /// Ends a drag in the user's hand: the pointer's moves count again from the next press.
    void letGo() { m_letGo = true; }

    /// Turns the control by a wheel event, wherever the pointer is.
    void turn(QWheelEvent *event);

signals:
    /// Wheel or key: move by this many positions, positive down (vertical) or right (horizontal).
    void stepped(int positions);
    /// Home key: back to the default.
    void resetRequested();

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override { turn(event); }
    void paintEvent(QPaintEvent *event) override;

private:
    int stepOfKey(int key) const;

    const int m_up;        ///< the step of one position upwards, -1 or 1
    const bool m_sideways; ///< the left and right keys count
    bool m_letGo = false;
    int m_wheelRemainder = 0; ///< eighths of a degree that did not make a whole position yet
};
