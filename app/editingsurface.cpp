#include "app/editingsurface.h"

#include "common/geometry.h"
#include "mixer/gainreduction.h"
#include "widgets/colours.h"
#include "widgets/drawcompressor.h"
#include "widgets/draweq.h"
#include "widgets/drawing.h"
#include "widgets/eqshapes.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

using drawing::caption;
using drawing::captionHeight;
using drawing::fill;

namespace {

constexpr QSize areaSize(geometry::editingWidth, geometry::editingHeight);
constexpr int blockRadius = 5;
constexpr int headLine = 2; // height of the lines in the bands' colours
constexpr QPoint equalizerPlace(geometry::eqLeft, geometry::eqTop);
constexpr QPoint compressorPlace(geometry::compressorLeft, geometry::compressorTop);
constexpr QPoint reductionPlace(geometry::reductionLeft, geometry::reductionTop);
constexpr QRect shelfGlyph(27, 112, 40, 26); // in the high band, which has no Q

/// The bands from left to right, as indices of colours::bands.
constexpr int bandColours[] = {0, 3, 2, 1};

/// Draws a dark field with a border.
void well(QPainter &painter, QSize size)
{
    const QRectF field(QPoint(), size);
    fill(painter, field.adjusted(-1, -1, 1, 1), colours::edge);
    fill(painter, field, colours::well);
}

/// Draws a text to the left of a display, vertically centred on a row.
void rowLegend(QPainter &painter, int row, const QString &text, const QColor &colour)
{
    caption(
        painter, QRectF(-26, row - 5.5, 22, captionHeight), Qt::AlignRight | Qt::AlignVCenter, text,
        colour);
}

/// Draws a text below a display that ends at `bottom`, centred on a column.
void columnLegend(QPainter &painter, int column, int bottom, const QString &text)
{
    caption(
        painter, QRectF(column - 14.5, bottom + 2, 30, captionHeight), Qt::AlignCenter, text,
        colours::quiet);
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

/// Returns the text without the decimal of a whole number: "1k" for "1.0k".
QString shortText(const char *text)
{
    return QString::fromLatin1(text).remove(QStringLiteral(".0"));
}

/// @name Displays
/// The origin of the painter is the top-left corner of the display.
///@{

void equalizer(QPainter &painter)
{
    constexpr int height = 2 * DrawEq::zeroRow + 1;
    well(painter, QSize(DrawEq::columns, height));
    for (const EditingSurface::FrequencyMark &mark : EditingSurface::frequencyMarks) {
        const int column = eqshapes::column(mark.step);
        fill(painter, QRectF(column, 0, 1, height), colours::grid);
        if (mark.hasText) columnLegend(painter, column, height, shortText(mark.text));
    }
    for (const int gain : {12, 6, 0, -6, -12}) {
        const int row = DrawEq::zeroRow - heightOf(gain);
        const bool isZero = gain == 0;
        fill(painter, QRectF(0, row, DrawEq::columns, 1), isZero ? colours::tick : colours::grid);
        rowLegend(painter, row, signedText(gain), isZero ? colours::text : colours::quiet);
    }
}

void compressor(QPainter &painter)
{
    constexpr int side = DrawCompressor::side;
    well(painter, QSize(side, side));
    for (int level = DrawCompressor::lowestLevel; level <= 0; level += 10) {
        const int column = (level - DrawCompressor::lowestLevel) * DrawCompressor::pixelsPerDecibel;
        const int row = side - 1 - column;
        fill(painter, QRectF(column, 0, 1, side), colours::grid);
        fill(painter, QRectF(0, row, side, 1), colours::grid);
        rowLegend(painter, row, QString::number(level), colours::quiet);
        columnLegend(painter, column, side, QString::number(level));
    }
    // On this diagonal the output level equals the input level.
    painter.setPen(QPen(colours::line, 1));
    painter.drawLine(QPointF(0.5, side - 0.5), QPointF(side - 0.5, 0.5));
}

void reduction(QPainter &painter)
{
    well(painter, QSize(geometry::reductionWidth, geometry::reductionLength));
    for (const int decibels : {6, 12, 18, 24}) {
        const double gain = 32768 * std::pow(10.0, -decibels / 20.0);
        const int row = mixer::reductionTarget(static_cast<std::uint16_t>(gain)) - 1;
        fill(painter, QRectF(geometry::reductionWidth + 2, row, 3, 1), colours::tick);
        caption(
            painter, QRectF(geometry::reductionWidth + 7, row - 5.5, 14, captionHeight),
            Qt::AlignLeft | Qt::AlignVCenter, QString::number(decibels), colours::quiet);
    }
}

/// Draws the shape of the high band.
void shelf(QPainter &painter)
{
    painter.setPen(QPen(colours::bands[1], 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    QPainterPath path(QPointF(0, shelfGlyph.height() - 4));
    path.lineTo(10, shelfGlyph.height() - 4);
    path.cubicTo(20, shelfGlyph.height() - 4, 16, 4, 26, 4);
    path.lineTo(shelfGlyph.width(), 4);
    painter.drawPath(path);
}

///@}

void surface(QPainter &painter)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours::surface);
    painter.drawRoundedRect(QRectF(QPointF(), areaSize), blockRadius, blockRadius);
    const int height = areaSize.height();
    const int compressorWidth = areaSize.width() - geometry::compressorSection;
    fill(
        painter, QRectF(geometry::compressorSection + 7, 4, compressorWidth - 14, headLine),
        colours::edge);
    for (int column = 0; column < 3; ++column) {
        const int left = geometry::compressorKnobs + geometry::compressorPitch * column -
                         geometry::compressorPitch / 2;
        fill(painter, QRectF(left, 27, 1, height - 35), colours::line);
    }
    for (int band = 0; band <= 4; ++band) {
        const int left = geometry::bandsLeft + band * geometry::bandWidth;
        fill(painter, QRectF(left, 8, 1, height - 16), colours::line);
        if (band == 4) continue;
        const QColor colour = colours::bands[bandColours[band]];
        fill(painter, QRectF(left + 6, 4, geometry::bandWidth - 11, headLine), colour);
    }
}

void at(QPoint place, QPainter &painter, void (*draw)(QPainter &))
{
    painter.save();
    painter.translate(place);
    draw(painter);
    painter.restore();
}

void draw(QPainter &painter)
{
    surface(painter);
    at(equalizerPlace, painter, equalizer);
    at(compressorPlace, painter, compressor);
    at(reductionPlace, painter, reduction);
    at(QPoint(geometry::bandsLeft + 3 * geometry::bandWidth, 0) + shelfGlyph.topLeft(), painter,
       shelf);
}

} // namespace

EditingSurface::EditingSurface(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFixedSize(areaSize);
}

void EditingSurface::paintEvent(QPaintEvent *)
{
    const qreal ratio = devicePixelRatioF();
    if (m_image.isNull() || m_image.devicePixelRatio() != ratio)
        m_image = drawing::pixmap(QStringLiteral("editing"), areaSize, ratio, draw);
    QPainter painter(this);
    painter.fillRect(rect(), colours::page); // in the corners
    painter.drawPixmap(0, 0, m_image);
}
