#include "strips.h"

#include "common/geometry.h"
#include "sheet.h"

#include <QFont>
#include <QPainter>

#include <initializer_list>

namespace colour = sheet::colour;
using namespace geometry;
using sheet::fill;

namespace {

constexpr int headHeight = 32;
constexpr int capPointerRow = 15; // the row of a cap that points to the scale
constexpr int meterRows = geometry::meterHeight + 1;
constexpr int meterLevels[] = {0, 10, 20, 30, 40, 50};
constexpr int panLineRow = 133;
constexpr int separatorRow = 106;

struct FaderMark
{
    const char *text;
    qreal position; ///< position of the cap
    int size = 8;   ///< font size in pixels
};

constexpr FaderMark faderMarks[] = {
    {"+6", faderTop}, {"0", 157},  {"6", 169.5},
    {"12", 181},      {"20", 193}, {"30", 209},
    {"40", 219},      {"60", 235}, {"\u221e", faderBottom, 11},
};

void setFont(QPainter &painter, int pixels, QRgb rgb)
{
    QFont font(QStringLiteral("DejaVu Sans Condensed"));
    font.setPixelSize(pixels);
    painter.setFont(font);
    painter.setPen(QColor::fromRgba(rgb));
}

void surface(QPainter &painter, int width, bool selected)
{
    const int right = width - 1; // the last column is the gap to the next strip
    fill(painter, QRectF(0, 0, width, stripHeight), colour::gap);
    fill(
        painter, QRectF(0, 0, right, stripHeight), selected ? colour::surfaceLit : colour::surface);
    fill(painter, QRectF(0, 0, right, headHeight), selected ? colour::headLit : colour::head);
    if (selected) fill(painter, QRectF(0, 0, right, 2), colour::accent);
    fill(painter, QRectF(0, headHeight, right, 1), colour::line);
}

void separator(QPainter &painter, int row, int width)
{
    fill(painter, QRectF(4, row, width - 9, 1), colour::line);
}

/// Draws groove, ticks and numbers of a fader whose cap begins at column `cap`.
void faderScale(QPainter &painter, int cap)
{
    const qreal middle = cap + capWidth / 2.0;
    for (const FaderMark &mark : faderMarks) {
        const qreal row = mark.position + capPointerRow;
        const bool unity = mark.position == 157;
        fill(painter, QRectF(cap + 2, row, capWidth - 4, 1), unity ? colour::text : colour::tick);
        setFont(painter, mark.size, unity ? colour::text : colour::number);
        painter.drawText(
            QRectF(cap - 14, row - 5.5, 13, 12), Qt::AlignRight | Qt::AlignVCenter,
            QString::fromUtf8(mark.text));
    }
    fill(painter, QRectF(middle - 3, 156, 6, 108), colour::line);
    fill(painter, QRectF(middle - 2, 157, 4, 106), colour::well);
}

void meterWell(QPainter &painter, int left)
{
    fill(painter, QRectF(left - 1, meterTop - 1, meterWidth + 2, meterRows + 2), colour::line);
    fill(painter, QRectF(left, meterTop, meterWidth, meterRows), colour::well);
}

/// Draws ticks to the right of a meter: one every 10 dB from full scale down, two rows per decibel.
void meterTicks(QPainter &painter, int left)
{
    for (const int level : meterLevels) {
        fill(painter, QRectF(left, meterTop + 2 * level, 3, 1), colour::tick);
    }
}

void meterNumbers(QPainter &painter, int left)
{
    setFont(painter, 8, colour::number);
    for (const int level : meterLevels) {
        painter.drawText(
            QRectF(left, meterTop + 2 * level - 5.5, 14, 12), Qt::AlignLeft | Qt::AlignVCenter,
            QString::number(-level));
    }
}

/// Draws the line of a pan marker, the tick at its centre and the letters at its ends.
void panLine(QPainter &painter, int left)
{
    setFont(painter, 10, colour::number);
    painter.drawText(QRectF(left + 4, 112, 10, 13), Qt::AlignCenter, QStringLiteral("L"));
    painter.drawText(QRectF(left + 42, 112, 10, 13), Qt::AlignCenter, QStringLiteral("R"));
    fill(painter, QRectF(left + 27, 125, 2, 3), colour::tick);
    fill(painter, QRectF(left + 4, panLineRow, 48, 2), colour::well);
}

} // namespace

namespace strips {

void mono(QPainter &painter, bool selected)
{
    surface(painter, stripWidth, selected);
    separator(painter, separatorRow, stripWidth);
    panLine(painter, 0);
    faderScale(painter, faderColumns[0]);
    meterWell(painter, monoMeterColumn);
    meterTicks(painter, 45);
}

void pair(QPainter &painter, bool selected)
{
    surface(painter, pairWidth, selected);
    separator(painter, separatorRow, pairWidth);
    panLine(painter, 0);
    panLine(painter, stripWidth);
    faderScale(painter, faderColumns[2]);
    for (const int column : pairMeterColumns)
        meterWell(painter, column);
    meterTicks(painter, 83);
    meterNumbers(painter, 88);
}

void master(QPainter &painter)
{
    surface(painter, masterWidth + 1, false);
    separator(painter, separatorRow, masterWidth + 1);
    faderScale(painter, faderColumns[3]);
    for (const int column : masterMeterColumns)
        meterWell(painter, column);
    meterTicks(painter, 60);
    meterNumbers(painter, 64);
    setFont(painter, 9, colour::number);
    painter.drawText(QRectF(41, 134, 10, 12), Qt::AlignCenter, QStringLiteral("L"));
    painter.drawText(QRectF(50, 134, 10, 12), Qt::AlignCenter, QStringLiteral("R"));
}

} // namespace strips
