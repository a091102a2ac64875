#include "controls.h"

#include "widgets/colours.h"
#include "widgets/drawing.h"

#include <QLinearGradient>
#include <QPainter>

namespace {

void body(QPainter &painter, const QRectF &area, qreal radius)
{
    QLinearGradient shade(area.topLeft(), area.bottomLeft());
    shade.setColorAt(0, colours::capTop);
    shade.setColorAt(1, colours::capBottom);
    painter.setPen(QPen(colours::capEdge, 1));
    painter.setBrush(shade);
    painter.drawRoundedRect(area.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
}

} // namespace

namespace controls {

void faderCap(QPainter &painter)
{
    body(painter, QRectF(1, 1, 18, 29), 3);
    for (const int row : {6, 9, 21, 24}) {
        drawing::fill(painter, QRectF(4, row, 12, 1), colours::capEdge);
        drawing::fill(painter, QRectF(4, row + 1, 12, 0.5), colours::tick);
    }
    // The bright line is centred on row 15, the row of the cap that points to the scale.
    drawing::fill(painter, QRectF(2, 13, 16, 5), colours::capEdge);
    drawing::fill(painter, QRectF(2, 14, 16, 3), colours::text);
}

void panMarker(QPainter &painter, bool centred)
{
    body(painter, QRectF(2, 0, 12, 12), 2.5);
    drawing::fill(painter, QRectF(7, 2, 2, 8), centred ? colours::text : colours::accent);
}

void meterBar(QPainter &painter)
{
    // Two rows per decibel: red above -2 dB, amber above about -10 dB, green below.
    QLinearGradient zones(0, 0, 0, 107);
    zones.setColorAt(0.0, colours::red);
    zones.setColorAt(0.045, colours::red);
    zones.setColorAt(0.055, colours::amber);
    zones.setColorAt(0.12, colours::amber);
    zones.setColorAt(0.28, colours::green);
    zones.setColorAt(1.0, colours::green.darker(135));
    painter.fillRect(QRectF(0, 0, 6, 107), zones);
}

void checkMark(QPainter &painter)
{
    painter.setPen(QPen(colours::page, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({{2.5, 6.5}, {5, 9}, {9.5, 3.5}}));
}

void downArrow(QPainter &painter)
{
    painter.setPen(QPen(colours::quiet, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({{1.5, 1}, {5, 4.5}, {8.5, 1}}));
}

void icon(QPainter &painter)
{
    painter.scale(0.25, 0.25);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours::surface);
    painter.drawRoundedRect(QRectF(8, 8, 240, 240), 44, 44);
    const qreal capRows[] = {92, 150, 62};
    for (int i = 0; i < 3; ++i) {
        const qreal middle = 72 + 56 * i;
        painter.setBrush(colours::well);
        painter.drawRoundedRect(QRectF(middle - 6, 48, 12, 160), 6, 6);
        painter.setBrush(i == 1 ? colours::accent : colours::text);
        painter.drawRoundedRect(QRectF(middle - 20, capRows[i] - 16, 40, 40), 8, 8);
    }
}

} // namespace controls
