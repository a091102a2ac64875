#include "widgets/curvehandle.h"

#include "widgets/colours.h"

#include <QKeyEvent>
#include <QPainter>

#include <cmath>

using gestures::Gesture;

namespace {

constexpr double ringWidth = 2;
constexpr double grasp = 5; ///< pixels around the ring that belong to the handle

} // namespace

CurveHandle::CurveHandle(const QString &text, QWidget *parent)
    : StepControl(gestures::Layout::Horizontal, QAccessible::Dial, parent), m_text(text)
{
    setCursor(Qt::SizeAllCursor);
}

void CurveHandle::setColour(const QColor &colour)
{
    if (colour == m_colour) return;
    m_colour = colour;
    update();
}

void CurveHandle::setRadius(double radius)
{
    if (radius == m_radius) return;
    m_radius = radius;
    const int side = 2 * static_cast<int>(std::ceil(radius + grasp)) + 1;
    setFixedSize(side, side);
    update();
}

void CurveHandle::place(const QPointF &middle)
{
    const double half = width() / 2.0;
    const QPoint corner(
        static_cast<int>(std::floor(middle.x() - half)),
        static_cast<int>(std::floor(middle.y() - half)));
    if (m_middle != middle - corner) update();
    m_middle = middle - corner;
    move(corner);
}

QPointF CurveHandle::inParent(const QMouseEvent *event) const
{
    return event->localPos() + pos();
}

void CurveHandle::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool isSideways = key == Qt::Key_Left || key == Qt::Key_Right;
    if (m_isWalkable && isSideways && !(modifiers & ~Qt::ShiftModifier))
        emit walked(key == Qt::Key_Right ? 1 : -1);
    else if (
        m_isTurnable && modifiers == Qt::ControlModifier &&
        (key == Qt::Key_Up || key == Qt::Key_Down))
        emit turned(key == Qt::Key_Up ? 1 : -1);
    else
        StepControl::keyPressEvent(event);
}

void CurveHandle::wheelEvent(QWheelEvent *event)
{
    if (m_isWheelIgnored) return event->ignore();
    if (!m_isTurnable) return StepControl::wheelEvent(event);
    event->accept();
    const QPoint delta = event->angleDelta();
    m_wheelRemainder += delta.y() != 0 ? delta.y() : delta.x();
    const int notches = m_wheelRemainder / gestures::wheelUnits;
    m_wheelRemainder -= notches * gestures::wheelUnits;
    if (notches != 0) emit turned(notches);
}

void CurveHandle::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) return StepControl::mousePressEvent(event);
    raise();
    emit pressed(inParent(event));
}

void CurveHandle::mouseMoveEvent(QMouseEvent *event)
{
    if (!(event->buttons() & Qt::LeftButton)) return StepControl::mouseMoveEvent(event);
    emit moved(inParent(event), event->modifiers());
}

void CurveHandle::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) return StepControl::mouseDoubleClickEvent(event);
    emit pressed(inParent(event));
    emit gestureMade({Gesture::Kind::Default});
}

void CurveHandle::enterEvent(QEvent *event)
{
    StepControl::enterEvent(event);
    update();
}

void CurveHandle::leaveEvent(QEvent *event)
{
    StepControl::leaveEvent(event);
    update();
}

void CurveHandle::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor colour = isEnabled() ? m_colour : colours::noChannel;
    if (hasFocus()) {
        painter.setPen(QPen(colours::text, 1));
        painter.drawEllipse(m_middle, m_radius + 3.5, m_radius + 3.5);
    }
    painter.setPen(QPen(colour, ringWidth));
    QColor inside = colours::well;
    if (underMouse() && isEnabled()) inside = colours::surfaceLit;
    painter.setBrush(inside);
    painter.drawEllipse(m_middle, m_radius, m_radius);
    if (m_text.isEmpty()) return;
    QFont font = this->font();
    font.setBold(true);
    font.setPixelSize(qMax(10, qRound(m_radius * 1.2)));
    painter.setFont(font);
    painter.setPen(colour);
    const QRectF ring(m_middle.x() - m_radius, m_middle.y() - m_radius, 2 * m_radius, 2 * m_radius);
    painter.drawText(ring, Qt::AlignCenter | Qt::TextDontClip, m_text);
}
