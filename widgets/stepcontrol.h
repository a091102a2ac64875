#pragma once

#include "widgets/gestures.h"

#include <QAccessible>
#include <QPixmap>
#include <QWidget>

#include <functional>

/// An image that the user moves to change a value: a fader's cap, a pan marker or a knob. It takes
/// the focus, shows the focus, and turns wheel, keys and clicks into gestures. It does not move by
/// itself. GUI thread only.
class StepControl : public QWidget
{
    Q_OBJECT

public:
    StepControl(gestures::Layout layout, QAccessible::Role role, QWidget *parent);

    /// Shows an image, see sharpPixmap().
    void setImage(const QString &path);

    /// The values that the control can have, in the unit of the readout, for screen readers.
    struct Range
    {
        double lowest = 0;
        double highest = 0;
        double step = 1;
    };
    /// Sets a function that answers when a screen reader asks for them.
    void setRange(const std::function<Range()> &range) { m_range = range; }
    Range range() const { return m_range ? m_range() : Range(); }

    /// Sets the current value, in the unit of the readout and in words. Screen readers are told
    /// once a gesture, not at every move of a drag.
    void setReading(double value, const QString &words);
    double value() const { return m_value; }
    const QString &words() const { return m_words; }
    QAccessible::Role accessibleRole() const { return m_role; }

    /// Returns whether the user holds the control with the mouse and moves count.
    bool isHeld() const;
    /// Ends a drag in progress. Moves of the pointer count again after the next press.
    void letGo() { m_letGo = true; }

    /// Sets how many steps a notch of the wheel takes; 1 at first.
    void setNotchSteps(int steps) { m_notchSteps = steps; }

    /// Handles a wheel event, wherever the pointer is. Fractions of a notch add up.
    void turn(QWheelEvent *event);

signals:
    void gestureMade(const gestures::Gesture &gesture);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override { turn(event); }
    void paintEvent(QPaintEvent *event) override;

private:
    bool isResetClick(const QEvent *event) const;
    void announce();

    const gestures::Layout m_layout;
    QString m_image;
    QPixmap m_pixmap; ///< of the image, for the ratio of the screen at the last paint
    const QAccessible::Role m_role;
    std::function<Range()> m_range;
    double m_value = 0;
    QString m_words;
    double m_announced = 0; ///< the value that was announced last
    bool m_isHeld = false;  ///< between press and release of a mouse button
    bool m_letGo = false;
    int m_notchSteps = 1;
    int m_wheelRemainder = 0; ///< eighths of a degree that do not make a whole step yet
    bool m_wheelWasFine = false;
};
