#include "widgets/draweq.h"

#include "widgets/displaycolours.h"

#include <QPainter>

namespace {

QColor colourOf(EqCurve::State state)
{
    switch (state) {
    case EqCurve::State::On:
        return displaycolours::inCircuit;
    case EqCurve::State::Off:
        return displaycolours::switchedOff;
    case EqCurve::State::NoChannel:
        break;
    }
    return displaycolours::noChannel;
}

QPainterPath pathOf(const EqCurve &curve)
{
    constexpr int last = DrawEq::columns - 1;
    const int first = DrawEq::zeroRow - curve.response(1);
    QPainterPath path;
    path.reserve(DrawEq::columns + 3);
    path.moveTo(0, first);
    for (int x = 1; x <= last; ++x)
        path.lineTo(x, DrawEq::zeroRow - curve.response(x));
    path.lineTo(last, DrawEq::zeroRow);
    path.lineTo(0, DrawEq::zeroRow);
    path.lineTo(0, first);
    return path;
}

} // namespace

DrawEq::DrawEq(QWidget *parent) : QLabel(parent), m_path(pathOf(m_curve))
{
    setFixedSize(columns, 2 * zeroRow + 1);
}

void DrawEq::setCurve(const EqCurve &curve)
{
    if (curve == m_curve) return;
    m_curve = curve;
    m_path = pathOf(curve);
    update();
}

void DrawEq::paintEvent(QPaintEvent *)
{
    const QColor colour = colourOf(m_curve.state);
    QPainter painter(this);
    painter.setPen(QPen(colour, 1, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    painter.setBrush(colour);
    painter.drawPath(m_path);
}
