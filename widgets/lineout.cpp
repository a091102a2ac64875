#include "widgets/lineout.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>

#include <algorithm>

namespace {

constexpr int sourceWidth = 118;
constexpr int outputWidth = 104;
constexpr int roundness = 4;
constexpr int groupGap = 14; ///< rows between the master's sources and the computer's
constexpr int headLength = 9;
constexpr int headHalf = 4;
constexpr int socket = 3; ///< radius of the dot where arrows leave a source

/// Returns the curve of an arrow. It is level at both ends.
QPainterPath curve(const QPointF &from, const QPointF &to)
{
    const qreal middle = (from.x() + to.x()) / 2;
    QPainterPath path(from);
    path.cubicTo({middle, from.y()}, {middle, to.y()}, to);
    return path;
}

} // namespace

LineOut::LineOut(const QStringList &sources, int masters, QWidget *parent)
    : QWidget(parent), m_sources(sources), m_masters(masters)
{
    setMinimumSize(sourceWidth + outputWidth + 160, outputCount * outputPitch);
    setMouseTracking(true);
    describeRoutes();
}

void LineOut::setRoutes(const Routes &routes)
{
    if (routes == m_routes && m_changed < 0) return;
    m_routes = routes;
    m_changed = -1;
    describeRoutes();
    update();
}

void LineOut::setRoute(int output, int source)
{
    m_routes[static_cast<std::size_t>(output)] = source;
    m_changed = output;
    describeRoutes();
    update();
}

void LineOut::describeRoutes()
{
    QStringList lines;
    for (int output = 0; output < outputCount; ++output)
        lines += QStringLiteral("Line out %1 plays %2")
                     .arg(output + 1)
                     .arg(m_sources.value(m_routes[static_cast<std::size_t>(output)]));
    setAccessibleName(QStringLiteral("Routing of the line outputs"));
    setAccessibleDescription(lines.join(QStringLiteral("; ")));
}

QRectF LineOut::sourceBox(int source) const
{
    const qreal pitch = (height() - groupGap) / qreal(m_sources.size());
    const qreal top = source * pitch + (source < m_masters ? 0 : groupGap);
    return {0.5, qRound(top + (pitch - boxHeight) / 2) + 0.5, sourceWidth, boxHeight};
}

QRectF LineOut::outputBox(int output) const
{
    const qreal pitch = height() / qreal(outputCount);
    const qreal top = output * pitch + (pitch - boxHeight - 1) / 2;
    return {width() - outputWidth - 0.5, qFloor(top) + 0.5, outputWidth - 0.5, boxHeight};
}

LineOut::Place LineOut::placeAt(const QPointF &point) const
{
    for (int source = 0; source < m_sources.size(); ++source)
        if (sourceBox(source).contains(point)) return {Column::Sources, source};
    for (int output = 0; output < outputCount; ++output)
        if (outputBox(output).contains(point)) return {Column::Outputs, output};
    return {};
}

void LineOut::setPointed(const Place &place)
{
    if (place == m_pointed) return;
    m_pointed = place;
    update();
}

void LineOut::mouseMoveEvent(QMouseEvent *event)
{
    setPointed(placeAt(event->localPos()));
}

void LineOut::leaveEvent(QEvent *)
{
    setPointed({});
}

bool LineOut::isUsed(int source) const
{
    return std::find(m_routes.begin(), m_routes.end(), source) != m_routes.end();
}

bool LineOut::isHighlighted(int output) const
{
    switch (m_pointed.column) {
    case Column::Sources:
        return m_routes[static_cast<std::size_t>(output)] == m_pointed.row;
    case Column::Outputs:
        return output == m_pointed.row;
    case Column::None:
        break;
    }
    return output == m_changed;
}

QColor LineOut::colourOf(int output) const
{
    if (isHighlighted(output)) return m_accent;
    return m_routes[static_cast<std::size_t>(output)] < m_masters ? m_master : m_computer;
}

void LineOut::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const bool inFront : {false, true})
        for (int output = 0; output < outputCount; ++output)
            if (isHighlighted(output) == inFront) drawArrow(painter, output);
    for (int source = 0; source < m_sources.size(); ++source) {
        const QColor lit = source < m_masters ? m_master : m_computer;
        drawBox(painter, sourceBox(source), m_sources[source], isUsed(source) ? lit : QColor());
    }
    for (int output = 0; output < outputCount; ++output)
        drawBox(
            painter, outputBox(output), QStringLiteral("LINE OUT %1").arg(output + 1),
            colourOf(output));
}

/// @param lit border colour of a box that is in use; an invalid colour for any other box
void LineOut::drawBox(
    QPainter &painter, const QRectF &box, const QString &text, const QColor &lit) const
{
    painter.setPen(QPen(lit.isValid() ? lit : m_border, 1));
    painter.setBrush(m_box);
    painter.drawRoundedRect(box, roundness, roundness);
    painter.setPen(lit.isValid() ? m_text : m_quietText);
    painter.drawText(box, Qt::AlignCenter, text);
}

void LineOut::drawArrow(QPainter &painter, int output) const
{
    const QRectF source = sourceBox(m_routes[static_cast<std::size_t>(output)]);
    const QRectF target = outputBox(output);
    const QPointF from(source.right() + socket + 1, source.center().y());
    const QPointF tip(target.left() - 3, target.center().y());
    const QPointF neck = tip - QPointF(headLength, 0);
    const QColor colour = colourOf(output);

    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colour, isHighlighted(output) ? 2.5 : 1.5));
    painter.drawPath(curve(from, neck));
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(from, socket, socket);
    painter.drawPolygon(QPolygonF({tip, neck + QPointF(0, headHalf), neck - QPointF(0, headHalf)}));
}
