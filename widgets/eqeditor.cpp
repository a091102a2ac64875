#include "widgets/eqeditor.h"

#include "common/geometry.h"
#include "widgets/colours.h"
#include "widgets/curvehandle.h"
#include "widgets/drawing.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace {

constexpr int bands = tamber::eqBandCount;
constexpr int leftToRight[] = {0, 3, 2, 1};
constexpr int qSteps = 7;
constexpr double pixelsPerQ = 14;
constexpr double sumWidth = 2;

QString gainText(int gain)
{
    return (gain > 0 ? QStringLiteral("+") : QString()) + QString::number(gain);
}

} // namespace

EqEditor::EqEditor(QWidget *parent) : GraphWidget(parent)
{
    setObjectName(QStringLiteral("eqEditor"));
    for (std::size_t place = 0; place < bands; ++place) {
        const int band = leftToRight[place];
        auto *handle = new CurveHandle(QString::number(place + 1), this);
        handle->setWalkable(true);
        handle->setTurnable(EqGraph::hasQ(band));
        handle->setWheelIgnored(!EqGraph::hasQ(band));
        handle->setColour(colours::bands[band]);
        connect(handle, &CurveHandle::pressed, this, [this, band](const QPointF &at) {
            press(band, at);
        });
        connect(
            handle, &CurveHandle::moved, this,
            [this, band](const QPointF &at, Qt::KeyboardModifiers modifiers) {
                drag(band, at, modifiers);
            });
        m_handles[static_cast<std::size_t>(band)] = handle;
    }
}

void EqEditor::setCurve(const EqCurve &curve)
{
    if (curve == m_curve) return;
    m_curve = curve;
    computeLines();
    placeHandles();
    update();
}

void EqEditor::press(int band, const QPointF &at)
{
    m_pointer = at;
    m_dragged = m_curve.bands[static_cast<std::size_t>(band)];
    m_point = m_graph.handle(band, m_dragged);
    m_turn = 0;
    emit handlePressed(band);
}

void EqEditor::drag(int band, const QPointF &at, Qt::KeyboardModifiers modifiers)
{
    const bool isFine = modifiers & Qt::ShiftModifier;
    const QPointF by = (at - m_pointer) / (isFine ? geometry::fineDragPixels : 1);
    m_pointer = at;
    EqCurve::Band value = m_curve.bands[static_cast<std::size_t>(band)];
    // After a change from elsewhere the drag goes on from there.
    if (value.gain != m_dragged.gain || value.freq != m_dragged.freq)
        m_point = m_graph.handle(band, value);
    if (modifiers & Qt::AltModifier) {
        value.q = draggedQ(band, -by.y());
    } else {
        m_point += by;
        value.freq = m_graph.stepAt(band, m_point.x());
        value.gain = m_graph.gainAt(m_point.y());
    }
    emit handleMoved(band, value);
    m_dragged = m_curve.bands[static_cast<std::size_t>(band)];
}

/// Returns the Q step after a move upwards.
int EqEditor::draggedQ(int band, double up)
{
    const int q = m_curve.bands[static_cast<std::size_t>(band)].q;
    if (!EqGraph::hasQ(band)) return q;
    m_turn += up;
    const int steps = static_cast<int>(m_turn / pixelsPerQ);
    m_turn -= steps * pixelsPerQ;
    return std::clamp(q + steps, 0, qSteps - 1);
}

void EqEditor::arrange()
{
    const QFontMetricsF metrics(axisFont());
    const double left = metrics.horizontalAdvance(QStringLiteral("+12")) + 8;
    const double bottom = metrics.height() + 3;
    // The area lies on whole pixels, so that its edges are sharp.
    const double top = handleMargin();
    m_graph = EqGraph(QRectF(
        std::ceil(left), top, width() - std::ceil(left) - 1, height() - std::ceil(bottom) - top));
    for (CurveHandle *handle : m_handles)
        handle->setRadius(handleRadius());
    m_background = QPixmap();
    computeLines();
    placeHandles();
    update();
}

void EqEditor::placeHandles()
{
    for (int band = 0; band < bands; ++band)
        handle(band)->place(m_graph.handle(band, m_curve.bands[static_cast<std::size_t>(band)]));
}

void EqEditor::computeLines()
{
    for (int band = 0; band < bands; ++band) {
        const EqCurve::Band &value = m_curve.bands[static_cast<std::size_t>(band)];
        m_lines[static_cast<std::size_t>(band)] =
            value.gain == 0 ? QPolygonF() : m_graph.line(band, value);
    }
    m_sum = m_graph.sum(m_curve);
}

/// Draws well, grid and scales.
QPixmap EqEditor::background() const
{
    const auto draw = [this](QPainter &painter) {
        const QRectF &area = m_graph.area();
        const QFont font = axisFont();
        const double textHeight = QFontMetricsF(font).height();
        drawWell(painter, area);
        painter.setFont(font);
        for (const EqGraph::Mark &mark : EqGraph::marks) {
            const double x = m_graph.x(EqGraph::column(2, mark.step));
            drawing::fill(painter, QRectF(x - 0.5, area.top(), 1, area.height()), colours::grid);
            painter.setPen(colours::quiet);
            painter.drawText(
                QRectF(x - 30, area.bottom() + 3, 60, textHeight), Qt::AlignCenter,
                QLatin1String(mark.text));
        }
        for (int gain = -EqGraph::highestGain; gain <= EqGraph::highestGain; gain += 6) {
            const double y = m_graph.y(gain);
            drawing::fill(
                painter, QRectF(area.left(), y - 0.5, area.width(), 1),
                gain == 0 ? colours::tick : colours::grid);
            painter.setPen(gain == 0 ? colours::text : colours::quiet);
            painter.drawText(
                QRectF(0, y - textHeight / 2, area.left() - 5, textHeight),
                Qt::AlignRight | Qt::AlignVCenter, gainText(gain));
        }
    };
    return drawing::drawnPixmap(size(), devicePixelRatioF(), draw);
}

void EqEditor::paintEvent(QPaintEvent *)
{
    if (m_background.isNull() || m_background.devicePixelRatio() != devicePixelRatioF())
        m_background = background();
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_background);
    if (m_curve.state == EqCurve::State::NoChannel) return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(m_graph.area());
    drawBands(painter);
    const bool isOn = m_curve.state == EqCurve::State::On;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(
        isOn ? colours::inCircuit : colours::switchedOff, sumWidth, Qt::SolidLine, Qt::FlatCap,
        Qt::BevelJoin));
    painter.drawPolyline(m_sum);
}

/// Draws the bands' areas, the widths of the bells and the sign of the low cut.
void EqEditor::drawBands(QPainter &painter) const
{
    const bool isOn = m_curve.state == EqCurve::State::On;
    const double zero = m_graph.y(0);
    for (const int band : leftToRight) {
        const auto index = static_cast<std::size_t>(band);
        const EqCurve::Band &value = m_curve.bands[index];
        QColor colour = isOn ? colours::bands[band] : colours::switchedOff;
        if (EqGraph::hasQ(band)) {
            const auto [from, to] = EqGraph::halfGain(band, value);
            const double y = m_graph.y(value.gain);
            painter.setPen(QPen(colour, 2));
            painter.drawLine(QPointF(m_graph.x(from), y), QPointF(m_graph.x(to), y));
        }
        if (m_lines[index].isEmpty()) continue;
        QPolygonF shape = m_lines[index];
        shape += QPointF(m_graph.area().right(), zero);
        shape += QPointF(m_graph.area().left(), zero);
        colour.setAlpha(44);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        // The outline smooths the edge; a smooth fill would cost several times as much.
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.drawPolygon(shape);
        painter.setRenderHint(QPainter::Antialiasing);
        colour.setAlpha(110);
        painter.setPen(QPen(colour, 1, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawPolyline(m_lines[index]);
    }
    if (!m_curve.lowCut) return;
    // The tables hold no slope for the low cut, so it is a sign and not a curve.
    const double unit = font().pixelSize() / 12.0;
    const QPointF at = m_graph.area().bottomLeft() + QPointF(6, -8) * unit;
    painter.setPen(QPen(
        isOn ? colours::bands[0] : colours::switchedOff, 2, Qt::SolidLine, Qt::RoundCap,
        Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(
        QPolygonF({at, at + QPointF(9, -11) * unit, at + QPointF(24, -11) * unit}));
    painter.setFont(axisFont());
    painter.drawText(at + QPointF(29, -5) * unit, QStringLiteral("low cut"));
}
