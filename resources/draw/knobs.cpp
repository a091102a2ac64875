#include "knobs.h"

#include "widgets/colours.h"
#include "widgets/drawing.h"

#include <QLinearGradient>
#include <QPainter>

namespace {

constexpr qreal firstAngle = -150; // degrees clockwise from 12 o'clock; this is 7 o'clock
constexpr qreal angleStep = 15;    // degrees; half an hour on a clock face
constexpr qreal arcRadius = 15.5;
constexpr qreal bodyRadius = 12;

void arc(QPainter &painter)
{
    const QRectF circle(-arcRadius, -arcRadius, 2 * arcRadius, 2 * arcRadius);
    painter.setPen(QPen(colours::capTop, 2, Qt::SolidLine, Qt::FlatCap));
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(circle, 16 * -60, 16 * 300);
    painter.setPen(QPen(colours::tick, 1, Qt::SolidLine, Qt::FlatCap));
    for (const int frame : {0, knobs::frameCount / 2, knobs::frameCount - 1}) {
        painter.save();
        painter.rotate(firstAngle + angleStep * frame);
        painter.drawLine(QPointF(0, -arcRadius - 2), QPointF(0, -arcRadius + 1.5));
        painter.restore();
    }
}

void body(QPainter &painter)
{
    const QRectF circle(-bodyRadius, -bodyRadius, 2 * bodyRadius, 2 * bodyRadius);
    QLinearGradient shade(circle.topLeft(), circle.bottomLeft());
    shade.setColorAt(0, colours::capTop);
    shade.setColorAt(1, colours::capBottom);
    painter.setPen(QPen(colours::capEdge, 1));
    painter.setBrush(shade);
    painter.drawEllipse(circle);
}

void pointer(QPainter &painter, int frame)
{
    painter.rotate(firstAngle + angleStep * frame);
    painter.setPen(QPen(colours::accent, 2.4, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(0, -bodyRadius + 2), QPointF(0, -3.5));
}

} // namespace

namespace knobs {

int clockOf(int frame)
{
    return 700 + 100 * (frame / 2) + (frame % 2 == 0 ? 0 : 30);
}

void knob(QPainter &painter, int frame)
{
    painter.translate(size / 2.0, size / 2.0 + 0.5);
    arc(painter);
    body(painter);
    pointer(painter, frame);
}

} // namespace knobs
