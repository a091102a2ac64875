#pragma once

#include "widgets/stepcontrol.h"

#include <QColor>
#include <QPointF>

/// A ring on a graph, which the user drags to change two values at once. It passes on drags, the
/// keys Left and Right, and the wheel; the other keys are gestures on its first value, as on a
/// knob. It is drawn as a vector and placed by its graph. GUI thread only.
class CurveHandle : public StepControl
{
    Q_OBJECT

public:
    /// @param text in the ring, a digit; may be empty
    CurveHandle(const QString &text, QWidget *parent);

    /// Passes wheel and Ctrl + Up and Down on by turned(). Without it the wheel is a gesture and
    /// those keys do nothing.
    void setTurnable(bool turnable) { m_isTurnable = turnable; }
    /// Passes Left and Right on by walked(). Without it they are steps as on a knob.
    void setWalkable(bool walkable) { m_isWalkable = walkable; }
    /// Leaves the wheel to the widgets below.
    void setWheelIgnored(bool ignored) { m_isWheelIgnored = ignored; }

    void setColour(const QColor &colour);
    void setRadius(double radius);
    /// Moves the ring's middle to a place in the parent.
    void place(const QPointF &middle);

signals:
    /// @param at in the parent's coordinates, which do not move with the handle
    void pressed(const QPointF &at);
    void moved(const QPointF &at, Qt::KeyboardModifiers modifiers);
    void walked(int steps); ///< to the right, if positive
    void turned(int steps);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QPointF inParent(const QMouseEvent *event) const;

    const QString m_text;
    QColor m_colour = Qt::white;
    double m_radius = 0;
    QPointF m_middle; ///< in the handle's own coordinates
    bool m_isTurnable = false;
    bool m_isWalkable = false;
    bool m_isWheelIgnored = false;
    int m_wheelRemainder = 0; ///< eighths of a degree that do not make a notch yet
};
