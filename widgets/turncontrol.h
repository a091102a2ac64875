#pragma once

#include "widgets/stepcontrol.h"

/// A control of one value that is drawn as a vector and has any size: a field or a dial. It passes
/// on drags of the left mouse button and computes nothing. GUI thread only.
class TurnControl : public StepControl
{
    Q_OBJECT

public:
    explicit TurnControl(QAccessible::Role role, QWidget *parent);

signals:
    /// @param at in the window's coordinates, which do not move with the control
    void pressed(const QPointF &at);
    void moved(const QPointF &at, bool fine);
    void clicked(); ///< pressed and released without a drag

protected:
    void changeEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QPointF m_press;
    bool m_isClick = false; ///< pressed, and not dragged since
};
