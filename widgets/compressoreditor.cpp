#include "widgets/compressoreditor.h"

#include "common/geometry.h"
#include "widgets/colours.h"
#include "widgets/curvehandle.h"
#include "widgets/drawing.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr int gridStep = 12; // dB

} // namespace

CompressorEditor::CompressorEditor(QWidget *parent)
    : GraphWidget(parent), m_threshold(new CurveHandle(QStringLiteral("T"), this)),
      m_ratio(new CurveHandle(QStringLiteral("R"), this))
{
    setObjectName(QStringLiteral("compressorEditor"));
    m_threshold->setCursor(Qt::SizeHorCursor);
    m_ratio->setCursor(Qt::SizeVerCursor);
    connect(m_threshold, &CurveHandle::pressed, this, [this](const QPointF &at) {
        press(at, m_graph.thresholdHandle(m_curve));
    });
    connect(m_ratio, &CurveHandle::pressed, this, [this](const QPointF &at) {
        press(at, m_graph.ratioHandle(m_curve));
    });
    connect(m_threshold, &CurveHandle::moved, this, &CompressorEditor::dragThreshold);
    connect(m_ratio, &CurveHandle::moved, this, &CompressorEditor::dragRatio);
}

void CompressorEditor::setCurve(const CompressorCurve &curve, int makeUp)
{
    if (curve == m_curve && makeUp == m_makeUp) return;
    m_curve = curve;
    m_makeUp = makeUp;
    m_picture = QPixmap();
    placeHandles();
    update();
}

void CompressorEditor::setInput(const std::optional<double> &level)
{
    if (level == m_input) return;
    update(dotArea());
    m_input = level;
    update(dotArea());
}

std::optional<QPointF> CompressorEditor::dot() const
{
    if (!m_input || *m_input < CompressorGraph::lowestLevel) return std::nullopt;
    return m_graph.at(*m_input, m_curve.output(*m_input));
}

void CompressorEditor::press(const QPointF &at, const QPointF &handle)
{
    m_pointer = at;
    m_point = handle;
    m_dragged = m_curve;
    emit handlePressed();
}

/// Returns the working point after a move.
QPointF CompressorEditor::dragged(const QPointF &at, Qt::KeyboardModifiers modifiers)
{
    const bool isFine = modifiers & Qt::ShiftModifier;
    m_point += (at - m_pointer) / (isFine ? geometry::fineDragPixels : 1);
    m_pointer = at;
    return m_point;
}

void CompressorEditor::dragThreshold(const QPointF &at, Qt::KeyboardModifiers modifiers)
{
    // After a change from elsewhere the drag goes on from there.
    if (m_curve.threshold != m_dragged.threshold) m_point = m_graph.thresholdHandle(m_curve);
    emit thresholdMoved(m_graph.thresholdAt(dragged(at, modifiers).x()));
    m_dragged = m_curve;
}

void CompressorEditor::dragRatio(const QPointF &at, Qt::KeyboardModifiers modifiers)
{
    if (!(m_curve == m_dragged)) m_point = m_graph.ratioHandle(m_curve);
    emit ratioMoved(m_graph.ratioAt(m_curve, dragged(at, modifiers).y()));
    m_dragged = m_curve;
}

void CompressorEditor::arrange()
{
    const QFontMetricsF metrics(axisFont());
    const double left = std::ceil(metrics.horizontalAdvance(QStringLiteral("-60")) + 8);
    const double bottom = std::ceil(metrics.height() + 3) + 1;
    m_threshold->setRadius(handleRadius());
    m_ratio->setRadius(handleRadius());
    // The ratio's handle lies half outside the area, at a ratio of 1 in its upper corner.
    const double outside = handleMargin();
    m_graph = CompressorGraph(
        QRectF(left, outside, width() - left - outside, height() - bottom - outside));
    m_background = QPixmap();
    placeHandles();
    update();
}

void CompressorEditor::placeHandles()
{
    m_threshold->place(m_graph.thresholdHandle(m_curve));
    m_ratio->place(m_graph.ratioHandle(m_curve));
    const bool isOn = m_curve.state == CompressorCurve::State::On;
    for (CurveHandle *handle : {m_threshold, m_ratio}) {
        handle->setColour(isOn ? colours::inCircuit : colours::switchedOff);
        handle->setVisible(m_curve.state != CompressorCurve::State::NoChannel);
    }
}

QPixmap CompressorEditor::background() const
{
    const auto draw = [this](QPainter &painter) { drawGrid(painter); };
    return drawing::drawnPixmap(size(), devicePixelRatioF(), draw);
}

/// Draws well, grid and scales.
void CompressorEditor::drawGrid(QPainter &painter) const
{
    const QRectF &area = m_graph.area();
    const QFont font = axisFont();
    const double textHeight = QFontMetricsF(font).height();
    drawWell(painter, area);
    painter.setFont(font);
    for (int level = CompressorGraph::lowestLevel; level <= 0; level += gridStep) {
        const double x = m_graph.x(level);
        const double y = m_graph.y(level);
        const QColor colour = level == 0 ? colours::tick : colours::grid;
        drawing::fill(painter, QRectF(x - 0.5, area.top(), 1, area.height()), colour);
        drawing::fill(painter, QRectF(area.left(), y - 0.5, area.width(), 1), colour);
        painter.setPen(level == 0 ? colours::text : colours::quiet);
        painter.drawText(
            QRectF(x - 20, area.bottom() + 3, 40, textHeight), Qt::AlignCenter,
            QString::number(level));
        painter.drawText(
            QRectF(0, y - textHeight / 2, area.left() - 5, textHeight),
            Qt::AlignRight | Qt::AlignVCenter, QString::number(level));
    }
    // On this diagonal the output level equals the input level.
    constexpr int low = CompressorGraph::lowestLevel;
    constexpr int high = CompressorGraph::highestLevel;
    painter.setPen(QPen(colours::line, 1));
    painter.drawLine(m_graph.at(low, low), m_graph.at(high, high));
}

void CompressorEditor::drawCurve(QPixmap &picture) const
{
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(m_graph.area());
    constexpr int low = CompressorGraph::lowestLevel;
    constexpr int high = CompressorGraph::highestLevel;
    const bool isOn = m_curve.state == CompressorCurve::State::On;
    const QColor colour = isOn ? colours::inCircuit : colours::switchedOff;
    const double knee = m_curve.kneeLevel();
    const auto line = [&](double gain) {
        return QPolygonF(
            {m_graph.at(low, low + gain), m_graph.at(knee, knee + gain),
             m_graph.at(high, m_curve.output(high) + gain)});
    };
    painter.setPen(QPen(colours::noChannel, 1, Qt::DotLine));
    painter.drawLine(m_graph.at(knee, knee), m_graph.at(knee, low));
    if (m_makeUp != 0) {
        QColor shifted = colour;
        shifted.setAlpha(170);
        painter.setPen(QPen(shifted, 1.5, Qt::DashLine, Qt::FlatCap, Qt::BevelJoin));
        painter.drawPolyline(line(m_makeUp));
    }
    painter.setPen(QPen(colour, 2, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin));
    painter.drawPolyline(line(0));
}

double CompressorEditor::dotRadius() const
{
    return font().pixelSize() * 0.4;
}

/// Returns the area of the dot and of the line below it.
QRect CompressorEditor::dotArea() const
{
    const std::optional<QPointF> place = dot();
    if (!place) return QRect();
    const double radius = dotRadius() + 2;
    return QRectF(
               place->x() - radius, place->y() - radius, 2 * radius,
               m_graph.area().bottom() - place->y() + radius + 2)
        .toAlignedRect();
}

void CompressorEditor::paintEvent(QPaintEvent *)
{
    if (m_background.isNull() || m_background.devicePixelRatio() != devicePixelRatioF()) {
        m_background = background();
        m_picture = QPixmap();
    }
    if (m_picture.isNull()) {
        m_picture = m_background;
        if (m_curve.state != CompressorCurve::State::NoChannel) drawCurve(m_picture);
    }
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_picture);
    if (m_curve.state == CompressorCurve::State::NoChannel) return;
    painter.setRenderHint(QPainter::Antialiasing);
    const std::optional<QPointF> place = dot();
    if (!place) return;
    QColor below = colours::amber;
    below.setAlpha(110);
    const QRectF line(std::floor(place->x()), place->y(), 1, m_graph.area().bottom() - place->y());
    painter.fillRect(line, below);
    painter.setPen(QPen(colours::well, 1));
    painter.setBrush(colours::amber);
    painter.drawEllipse(*place, dotRadius(), dotRadius());
}
