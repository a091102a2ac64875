#include "widgets/stripsurface.h"

#include "common/geometry.h"
#include "widgets/colours.h"
#include "widgets/drawing.h"

#include <QPainter>
#include <QPainterPath>

using namespace geometry;
using drawing::caption;
using drawing::captionHeight;
using drawing::fill;

namespace stripsurface {
namespace {

constexpr int blockRadius = 5;
constexpr int selectionHeight = 2;
constexpr int capPointerRow = 15; // the row of a cap that points to the scale
constexpr int meterLevels[] = {0, 10, 20, 30, 40, 50};
constexpr int panLineRow = 133;
constexpr int scaleWidth = 12;

struct FaderMark
{
    const char *text;
    qreal position; ///< position of the cap
    bool isBoost = false;
};

constexpr FaderMark faderMarks[] = {
    {"6", faderTop, true}, {"0", 157},  {"6", 169.5},
    {"12", 181},           {"20", 193}, {"30", 209},
    {"40", 219},           {"60", 235}, {"\u221e", faderBottom},
};

/// Returns the outline of the block that a strip is part of. The half of a pair ends in the middle
/// of the block.
QRectF blockOf(Look look)
{
    const QRectF area(QPointF(), sizeOf(look));
    if (look == Look::Left) return area.adjusted(0, 0, stripWidth, 0);
    if (look == Look::Right) return area.adjusted(-stripWidth, 0, 0, 0);
    return area;
}

void surface(QPainter &painter, Look look, bool selected)
{
    QPainterPath block;
    block.addRoundedRect(blockOf(look), blockRadius, blockRadius);
    const QRectF area(QPointF(), sizeOf(look));
    painter.setClipRect(area);
    painter.fillPath(block, selected ? colours::surfaceLit : colours::surface);
    if (selected) {
        painter.setClipPath(block, Qt::IntersectClip);
        fill(painter, QRectF(0, 0, area.width(), selectionHeight), colours::accent);
    }
    painter.setClipping(false);
    if (look != Look::Right) return;
    // The line between the strips of a pair leaves the scales space.
    fill(painter, QRectF(0, 8, 1, panRow + panHeight - 8), colours::line);
    fill(painter, QRectF(0, meterBottom + 16, 1, linkRow - meterBottom - 22), colours::line);
}

/// Draws a plus that is narrower than that of the font, which leaves space for the digit.
void narrowPlus(QPainter &painter, qreal right, qreal row)
{
    fill(painter, QRectF(right - 5, row, 5, 1), colours::text);
    fill(painter, QRectF(right - 3, row - 2, 1, 5), colours::text);
}

/// Draws groove, ticks and numbers of a fader whose cap begins at column `cap`.
void faderScale(QPainter &painter, int cap)
{
    const qreal middle = cap + capWidth / 2.0;
    for (const FaderMark &mark : faderMarks) {
        const qreal row = mark.position + capPointerRow;
        const bool unity = mark.position == 157;
        fill(painter, QRectF(cap + 3, row, capWidth - 6, 1), unity ? colours::text : colours::tick);
        caption(
            painter, QRectF(cap - scaleWidth, row - 5.5, scaleWidth, captionHeight),
            Qt::AlignRight | Qt::AlignVCenter, QString::fromUtf8(mark.text), colours::text);
        if (mark.isBoost) narrowPlus(painter, cap - 6.5, row);
    }
    fill(painter, QRectF(middle - 3, 156, 6, 108), colours::edge);
    fill(painter, QRectF(middle - 2, 157, 4, 106), colours::well);
}

/// Draws the numbers to the right of a meter: one every 10 dB from full scale down, two rows per
/// decibel.
void meterScale(QPainter &painter, int left)
{
    for (const int level : meterLevels) {
        const int row = meterTop + 2 * level;
        caption(
            painter, QRectF(left + 2, row - 5.5, scaleWidth, captionHeight),
            Qt::AlignLeft | Qt::AlignVCenter, QString::number(level), colours::quiet);
    }
}

/// Draws the line of a pan marker, the tick at its centre and the letters at its ends.
void panLine(QPainter &painter, int left)
{
    caption(
        painter, QRectF(left + 4, 112, 10, 13), Qt::AlignCenter, QStringLiteral("L"),
        colours::quiet);
    caption(
        painter, QRectF(left + 42, 112, 10, 13), Qt::AlignCenter, QStringLiteral("R"),
        colours::quiet);
    fill(painter, QRectF(left + 27, 125, 2, 3), colours::tick);
    fill(painter, QRectF(left + 4, panLineRow, 48, 2), colours::edge);
}

void mono(QPainter &painter)
{
    panLine(painter, 0);
    faderScale(painter, faderColumns[0]);
    meterScale(painter, monoMeterColumn + meterWidth + 1);
}

void pair(QPainter &painter)
{
    panLine(painter, 0);
    panLine(painter, stripWidth);
    faderScale(painter, faderColumns[2]);
    meterScale(painter, pairMeterColumns[1] + meterWidth + 1);
}

void master(QPainter &painter)
{
    faderScale(painter, faderColumns[3]);
    meterScale(painter, masterMeterColumns[1] + meterWidth + 1);
}

void draw(QPainter &painter, Look look, bool selected)
{
    surface(painter, look, selected);
    switch (look) {
    case Look::Left:
    case Look::Right:
        return mono(painter);
    case Look::Pair:
        return pair(painter);
    case Look::Master:
        return master(painter);
    }
}

} // namespace

QSize sizeOf(Look look)
{
    const int width = look == Look::Pair     ? pairWidth
                      : look == Look::Master ? masterWidth
                                             : stripWidth;
    return {width, stripHeight};
}

QPixmap image(Look look, bool selected, qreal ratio)
{
    const QString key =
        QStringLiteral("strip/%1/%2").arg(static_cast<int>(look)).arg(selected ? 1 : 0);
    return drawing::pixmap(key, sizeOf(look), ratio, [look, selected](QPainter &painter) {
        draw(painter, look, selected);
    });
}

} // namespace stripsurface
