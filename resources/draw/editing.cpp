#include "editing.h"

#include "common/geometry.h"
#include "mixer/gainreduction.h"
#include "sheet.h"
#include "widgets/drawcompressor.h"
#include "widgets/draweq.h"
#include "widgets/eqshapes.h"

#include <QPainter>

#include <cmath>

namespace colour = sheet::colour;
using sheet::fill;

namespace {

constexpr int headHeight = 24;
constexpr int dividers[] = {184, 278, 372, 466, 560}; // columns between the sections
constexpr QPoint equalizerPlace(geometry::eqLeft, geometry::eqTop);
constexpr QPoint compressorPlace(geometry::compressorLeft, geometry::compressorTop);
constexpr QPoint reductionPlace(geometry::reductionLeft, geometry::reductionTop);

constexpr int textHeight = 12;
constexpr qreal legendWidth = 0.86; // narrow enough for "100" and "200" side by side

struct FrequencyMark
{
    const char *text;
    int step; ///< frequency step of the high-mid and low-mid bands
};

constexpr FrequencyMark frequencyMarks[] = {
    {"50", 2},  {"100", 7}, {"200", 11}, {"500", 18},
    {"1k", 25}, {"2k", 35}, {"5k", 47},  {"10k", 55},
};

void setFont(QPainter &painter, QRgb rgb)
{
    QFont font(QStringLiteral("DejaVu Sans Condensed"));
    font.setPixelSize(8);
    painter.setFont(font);
    painter.setPen(QColor::fromRgba(rgb));
}

/// Draws a dark field with a border.
void well(QPainter &painter, QSize size)
{
    const QRectF field(QPoint(), size);
    fill(painter, field.adjusted(-1, -1, 1, 1), colour::line);
    fill(painter, field, colour::well);
}

/// Draws a text to the left of a display, vertically centred on a row.
void rowLegend(QPainter &painter, int row, const QString &text, QRgb rgb)
{
    setFont(painter, rgb);
    painter.drawText(
        QRectF(-24, row - 5.5, 20, textHeight), Qt::AlignRight | Qt::AlignVCenter, text);
}

/// Draws a text below a display that ends at `bottom`, centred on a column.
void columnLegend(QPainter &painter, int column, int bottom, const QString &text)
{
    setFont(painter, colour::number);
    painter.save();
    painter.translate(column + 0.5, bottom + 1);
    painter.scale(legendWidth, 1);
    painter.drawText(QRectF(-15, 0, 30, textHeight), Qt::AlignCenter, text);
    painter.restore();
}

/// Returns how many pixels a gain moves the curve away from its 0 dB line.
int heightOf(int gain)
{
    EqCurve curve;
    curve.bands[0] = {gain, 31, 0};
    return curve.response(1);
}

QString signedText(int number)
{
    return (number > 0 ? QStringLiteral("+") : QString()) + QString::number(number);
}

/// @name Displays
/// The origin of the painter is the top-left corner of the display.
///@{

void equalizer(QPainter &painter)
{
    constexpr int height = 2 * DrawEq::zeroRow + 1;
    well(painter, QSize(DrawEq::columns, height));
    for (const FrequencyMark &mark : frequencyMarks) {
        const int column = eqshapes::column(mark.step);
        fill(painter, QRectF(column, 0, 1, height), colour::grid);
        columnLegend(painter, column, height, QLatin1String(mark.text));
    }
    for (const int gain : {12, 6, 0, -6, -12}) {
        const int row = DrawEq::zeroRow - heightOf(gain);
        fill(painter, QRectF(0, row, DrawEq::columns, 1), gain == 0 ? colour::tick : colour::grid);
        rowLegend(painter, row, signedText(gain), gain == 0 ? colour::text : colour::number);
    }
}

void compressor(QPainter &painter)
{
    constexpr int side = DrawCompressor::side;
    well(painter, QSize(side, side));
    for (int level = DrawCompressor::lowestLevel; level <= 0; level += 10) {
        const int column = (level - DrawCompressor::lowestLevel) * DrawCompressor::pixelsPerDecibel;
        const int row = side - 1 - column;
        fill(painter, QRectF(column, 0, 1, side), colour::grid);
        fill(painter, QRectF(0, row, side, 1), colour::grid);
        rowLegend(painter, row, QString::number(level), colour::number);
        if (level % 20 == 0) columnLegend(painter, column, side, QString::number(level));
    }
    // On this diagonal the output level equals the input level.
    painter.setPen(QPen(QColor::fromRgba(colour::line), 1));
    painter.drawLine(QPointF(0.5, side - 0.5), QPointF(side - 0.5, 0.5));
}

void reduction(QPainter &painter)
{
    well(painter, QSize(geometry::reductionWidth, geometry::reductionLength));
    setFont(painter, colour::number);
    for (const int decibels : {6, 12, 18, 24}) {
        const double gain = 32768 * std::pow(10.0, -decibels / 20.0);
        const int row = mixer::reductionTarget(static_cast<std::uint16_t>(gain)) - 1;
        fill(painter, QRectF(geometry::reductionWidth + 2, row, 3, 1), colour::tick);
        painter.drawText(
            QRectF(geometry::reductionWidth + 7, row - 5.5, 14, textHeight),
            Qt::AlignLeft | Qt::AlignVCenter, QString::number(decibels));
    }
}

///@}

void surface(QPainter &painter)
{
    const QRectF area(QPoint(), editing::size);
    fill(painter, area, colour::gap);
    fill(painter, area.adjusted(1, 1, -1, -1), colour::surface);
    fill(painter, QRectF(1, 1, area.width() - 2, headHeight - 1), colour::head);
    fill(painter, QRectF(1, headHeight, area.width() - 2, 1), colour::line);
    for (const int column : dividers) {
        fill(painter, QRectF(column, 1, 1, headHeight - 1), colour::line);
        fill(
            painter, QRectF(column, headHeight + 4, 1, area.height() - headHeight - 9),
            colour::line);
    }
}

void at(QPoint place, QPainter &painter, void (*draw)(QPainter &))
{
    painter.save();
    painter.translate(place);
    draw(painter);
    painter.restore();
}

} // namespace

namespace editing {

void background(QPainter &painter)
{
    surface(painter);
    at(equalizerPlace, painter, equalizer);
    at(compressorPlace, painter, compressor);
    at(reductionPlace, painter, reduction);
}

} // namespace editing
