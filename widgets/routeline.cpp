#include "widgets/routeline.h"

#include <QPainter>
#include <QPainterPath>

namespace routeline {

namespace {

constexpr qreal headHalf = 4.5;
constexpr qreal outline = 1.5;

/// Sets pen and brush for the mark or arrow head at an end of a route.
void useEnd(QPainter &painter, const Style &style)
{
    painter.setPen(QPen(style.colour, outline, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter.setBrush(style.fromMaster ? QBrush(style.colour) : QBrush(Qt::NoBrush));
}

} // namespace

void drawSocket(QPainter &painter, const QPointF &centre, const Style &style)
{
    useEnd(painter, style);
    const qreal radius = socketRadius - outline / 2;
    painter.drawEllipse(centre, radius, radius);
}

void drawArrow(QPainter &painter, const QPointF &from, const QPointF &tip, const Style &style)
{
    const QPointF start = from + QPointF(socketRadius, 0);
    const QPointF neck = tip - QPointF(headLength, 0);
    const qreal middle = (start.x() + neck.x()) / 2;
    QPainterPath path(start);
    path.cubicTo({middle, start.y()}, {middle, neck.y()}, neck);
    QPen pen(style.colour, style.strong ? 3 : 1.75, Qt::SolidLine, Qt::FlatCap);
    if (!style.fromMaster) {
        const qreal dash = 7 / pen.widthF(); // the pattern counts in widths of the pen
        pen.setDashPattern({dash, 5 / pen.widthF()});
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(pen);
    painter.drawPath(path);

    useEnd(painter, style);
    const qreal inset = outline / 2;
    painter.drawPolygon(QPolygonF(
        {tip - QPointF(2 * inset, 0), neck + QPointF(inset, headHalf - inset),
         neck + QPointF(inset, inset - headHalf)}));
}

} // namespace routeline
