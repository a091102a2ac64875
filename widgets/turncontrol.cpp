#include "widgets/turncontrol.h"

#include <QMouseEvent>

namespace {

constexpr double dragDistance = 3; // pixels; a shorter move is a click

} // namespace

TurnControl::TurnControl(QAccessible::Role role, QWidget *parent)
    : StepControl(gestures::Layout::Horizontal, role, parent)
{
}

void TurnControl::changeEvent(QEvent *event)
{
    StepControl::changeEvent(event);
    if (event->type() == QEvent::FontChange) updateGeometry(); // the size hint depends on it
}

void TurnControl::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) return StepControl::mousePressEvent(event);
    m_press = event->windowPos();
    m_isClick = true;
    emit pressed(m_press);
}

void TurnControl::mouseMoveEvent(QMouseEvent *event)
{
    if (!(event->buttons() & Qt::LeftButton)) return StepControl::mouseMoveEvent(event);
    const QPointF by = event->windowPos() - m_press;
    if (m_isClick && by.manhattanLength() < dragDistance) return;
    m_isClick = false;
    emit moved(event->windowPos(), event->modifiers() & Qt::ShiftModifier);
}

void TurnControl::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) return StepControl::mouseReleaseEvent(event);
    const bool isClick = m_isClick && rect().contains(event->pos());
    m_isClick = false;
    if (isClick) emit clicked();
}
