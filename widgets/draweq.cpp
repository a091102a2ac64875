#include "widgets/draweq.h"

#include "widgets/colours.h"

#include <QPainter>

namespace {

constexpr qreal markRadius = 3.2;

QColor colourOf(EqCurve::State state)
{
    switch (state) {
    case EqCurve::State::On:
        return colours::inCircuit;
    case EqCurve::State::Off:
        return colours::switchedOff;
    case EqCurve::State::NoChannel:
        break;
    }
    return colours::noChannel;
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
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(0.5, 0.5); // columns and rows are those of whole pixels
    painter.drawPath(m_path);
    if (m_curve.state == EqCurve::State::NoChannel) return;
    if (m_curve.lowCut) drawLowCut(painter);
    drawMarks(painter);
}

/// Draws the sign of the low cut at the left edge.
void DrawEq::drawLowCut(QPainter &painter) const
{
    constexpr int bottom = 2 * zeroRow - 3;
    painter.setPen(QPen(colours::bands[0], 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF({{3, bottom}, {9, bottom - 9.0}, {20, bottom - 9.0}}));
}

/// Marks each band on the curve with a dot of its colour.
void DrawEq::drawMarks(QPainter &painter) const
{
    const bool isOn = m_curve.state == EqCurve::State::On;
    painter.setPen(QPen(colours::well, 1));
    for (std::size_t band = 0; band < m_curve.marks.size(); ++band) {
        const int column = qMax(1, m_curve.marks[band]);
        painter.setBrush(isOn ? colours::bands[band] : colours::switchedOff);
        painter.drawEllipse(
            QPointF(column, zeroRow - m_curve.response(column)), markRadius, markRadius);
    }
}
