#include "widgets/lineout.h"

#include "widgets/routeline.h"

#include <QCoreApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <QtMath>

#include <algorithm>

namespace {

constexpr int sourceWidth = 118;
constexpr int roundness = 4;
constexpr int groupGap = 14; ///< rows between the master's sources and the computer's
constexpr int endGap = 3;    ///< columns between a box and the end of a route
constexpr qreal quietOpacity = 0.6;
constexpr qreal disabledOpacity = 0.6;

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

void LineOut::setDisabledText(const QString &text)
{
    m_disabledText = text;
    describeRoutes();
}

// ---- Words

QString LineOut::nameOf(const Place &place) const
{
    return place.column == Column::Sources ? m_sources.value(place.row)
                                           : QStringLiteral("Line out %1").arg(place.row + 1);
}

/// Returns what a box is connected to: "Line out 1 plays MASTER L".
QString LineOut::describe(const Place &place) const
{
    if (place.column == Column::Outputs)
        return QStringLiteral("%1 plays %2")
            .arg(nameOf(place), m_sources.value(sourceOf(place.row)));
    QStringList outputs;
    for (int output = 0; output < outputCount; ++output)
        if (sourceOf(output) == place.row) outputs += QString::number(output + 1);
    if (outputs.isEmpty()) return QStringLiteral("No line out plays %1").arg(nameOf(place));
    return QStringLiteral("%1 plays on line out %2")
        .arg(nameOf(place), outputs.join(QStringLiteral(", ")));
}

void LineOut::describeRoutes()
{
    QStringList lines;
    if (!isEnabled()) lines += m_disabledText;
    for (int output = 0; output < outputCount; ++output)
        lines += describe({Column::Outputs, output});
    setAccessibleName(QStringLiteral("Routing of the line outputs"));
    setAccessibleDescription(lines.join(QStringLiteral("; ")));
}

/// Returns false if there is no box at the place of the tip.
bool LineOut::showTip(const QHelpEvent &event) const
{
    const Place place = placeAt(event.pos());
    if (place.column == Column::None || isDragging()) return false;
    const QString drag = place.column == Column::Sources
                             ? QStringLiteral("Drag it to an output to play it there.")
                             : QStringLiteral("Drag it to a source to play that one.");
    QToolTip::showText(
        event.globalPos(),
        describe(place) + QStringLiteral(".\n") + (isEnabled() ? drag : m_disabledText));
    return true;
}

// ---- Places

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

QRectF LineOut::boxOf(const Place &place) const
{
    return place.column == Column::Sources ? sourceBox(place.row) : outputBox(place.row);
}

QPointF LineOut::socketOf(int source) const
{
    const QRectF box = sourceBox(source);
    return {box.right() + endGap + routeline::socketRadius, box.center().y()};
}

QPointF LineOut::tipOf(int output) const
{
    const QRectF box = outputBox(output);
    return {box.left() - endGap, box.center().y()};
}

/// Returns the box at a point. The end of a route belongs to its box.
LineOut::Place LineOut::placeAt(const QPointF &point) const
{
    constexpr int reach = endGap + 2 * routeline::socketRadius;
    for (int source = 0; source < m_sources.size(); ++source)
        if (sourceBox(source).adjusted(0, 0, reach, 0).contains(point))
            return {Column::Sources, source};
    for (int output = 0; output < outputCount; ++output)
        if (outputBox(output).adjusted(-reach, 0, 0, 0).contains(point))
            return {Column::Outputs, output};
    return {};
}

// ---- Pointer

void LineOut::setPointed(const Place &place)
{
    if (!isDragging()) {
        if (place.column == Column::None)
            unsetCursor();
        else
            setCursor(Qt::OpenHandCursor);
    }
    if (place == m_pointed) return;
    m_pointed = place;
    update();
}

/// Returns whether the drag can end on a box, which then changes a route.
bool LineOut::takesDrag(const Place &place) const
{
    if (!isDragging() || place.column == Column::None || place.column == m_grabbed.column)
        return false;
    return m_grabbed.column == Column::Sources ? sourceOf(place.row) != m_grabbed.row
                                               : sourceOf(m_grabbed.row) != place.row;
}

void LineOut::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) return;
    setPointed(placeAt(event->localPos()));
    if (m_pointed.column == Column::None) return;
    m_grabbed = m_pointed;
    m_pointer = event->localPos();
    setCursor(Qt::ClosedHandCursor);
    qApp->installEventFilter(this);
    update();
}

void LineOut::mouseMoveEvent(QMouseEvent *event)
{
    if (!(event->buttons() & Qt::LeftButton)) endDrag(); // the release went elsewhere
    setPointed(placeAt(event->localPos()));
    if (!isDragging()) return;
    m_pointer = event->localPos();
    update();
}

void LineOut::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !isDragging()) return;
    const Place place = placeAt(event->localPos());
    const Place grabbed = m_grabbed;
    const bool taken = takesDrag(place);
    endDrag();
    setPointed(place);
    if (!taken) return;
    if (grabbed.column == Column::Sources)
        emit routeChosen(place.row, grabbed.row);
    else
        emit routeChosen(grabbed.row, place.row);
}

void LineOut::endDrag()
{
    if (!isDragging()) return;
    qApp->removeEventFilter(this);
    m_grabbed = {};
    setPointed({});
    unsetCursor();
    update();
}

/// Watches the whole program during a drag. The focus may be on any widget when Escape is pressed,
/// and a box that opens gets the mouse release instead of the picture.
bool LineOut::eventFilter(QObject *watched, QEvent *event)
{
    const bool isKey =
        event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (isKey && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        event->accept();
        if (event->type() == QEvent::KeyPress) endDrag();
        return true;
    }
    if (event->type() == QEvent::WindowBlocked && watched == window()) endDrag();
    return QWidget::eventFilter(watched, event);
}

bool LineOut::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    if (!showTip(*static_cast<QHelpEvent *>(event))) QToolTip::hideText();
    return true;
}

void LineOut::leaveEvent(QEvent *)
{
    setPointed({});
}

void LineOut::hideEvent(QHideEvent *)
{
    endDrag();
}

void LineOut::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange) {
        endDrag();
        setPointed({});
        describeRoutes();
    }
    QWidget::changeEvent(event);
}

// ---- Painting

bool LineOut::isUsed(int source) const
{
    return std::find(m_routes.begin(), m_routes.end(), source) != m_routes.end();
}

bool LineOut::isHighlighted(int output) const
{
    if (isDragging()) return false;
    switch (m_pointed.column) {
    case Column::Sources:
        return sourceOf(output) == m_pointed.row;
    case Column::Outputs:
        return output == m_pointed.row;
    case Column::None:
        break;
    }
    return output == m_changed;
}

/// Returns whether an arrow steps back, so that the drag or the arrows of the box under the pointer
/// stand out.
bool LineOut::isQuiet(int output) const
{
    if (isDragging()) return true;
    return m_pointed.column != Column::None && !isHighlighted(output);
}

void LineOut::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const bool inFront : {false, true})
        for (int output = 0; output < outputCount; ++output)
            if (isHighlighted(output) == inFront) drawArrow(painter, output);
    for (int source = 0; source < m_sources.size(); ++source)
        drawSource(painter, source);
    for (int output = 0; output < outputCount; ++output)
        drawOutput(painter, output);
    if (isDragging()) drawDrag(painter);
    if (!isEnabled()) drawDisabledText(painter);
}

void LineOut::drawSource(QPainter &painter, int source) const
{
    const QColor lit = isEnabled() && isUsed(source) ? colourOf(source) : QColor();
    const bool isPointed = m_pointed == Place{Column::Sources, source};
    drawBox(painter, {Column::Sources, source}, m_sources[source], isPointed ? m_accent : lit);
    routeline::Style style{lit.isValid() ? lit : m_border, source < m_masters, false};
    if (isPointed) style.colour = m_accent;
    routeline::drawSocket(painter, socketOf(source), style);
}

void LineOut::drawOutput(QPainter &painter, int output) const
{
    const QColor lit = isHighlighted(output) ? m_accent : colourOf(sourceOf(output));
    drawBox(
        painter, {Column::Outputs, output}, QStringLiteral("LINE OUT %1").arg(output + 1),
        isEnabled() ? lit : QColor());
}

/// @param lit border colour of a box that is in use; an invalid colour for any other box
void LineOut::drawBox(
    QPainter &painter, const Place &place, const QString &text, const QColor &lit) const
{
    const bool isEnd = place == m_grabbed || (takesDrag(place) && place == m_pointed);
    const bool stands = isEnd || takesDrag(place);
    const QColor border = stands ? m_accent : lit.isValid() ? lit : m_border;
    painter.setPen(QPen(border, isEnd ? 2 : 1));
    painter.setBrush(stands ? m_target : m_box);
    painter.drawRoundedRect(boxOf(place), roundness, roundness);
    painter.setPen(stands || lit.isValid() ? m_text : m_quietText);
    painter.drawText(boxOf(place), Qt::AlignCenter, text);
}

void LineOut::drawArrow(QPainter &painter, int output) const
{
    const int source = sourceOf(output);
    const bool strong = isHighlighted(output);
    const routeline::Style style{strong ? m_accent : colourOf(source), source < m_masters, strong};
    painter.setOpacity(!isEnabled() ? disabledOpacity : isQuiet(output) ? quietOpacity : 1);
    routeline::drawArrow(painter, socketOf(source), tipOf(output), style);
    painter.setOpacity(1);
}

/// Draws the line of the drag from the box where it began to the pointer. Over a box that takes it,
/// the line ends there as the arrow will.
void LineOut::drawDrag(QPainter &painter) const
{
    const bool forwards = m_grabbed.column == Column::Sources;
    const bool taken = takesDrag(m_pointed);
    const Place source = forwards ? m_grabbed : m_pointed;
    const Place output = forwards ? m_pointed : m_grabbed;
    const QPointF from = forwards || taken ? socketOf(source.row) : m_pointer;
    const QPointF tip = !forwards || taken ? tipOf(output.row) : m_pointer;
    if (!taken && m_pointed == m_grabbed) return;
    const bool fromMaster = source.column != Column::Sources || source.row < m_masters;
    const routeline::Style style{m_accent, fromMaster, true};
    routeline::drawArrow(painter, from, tip, style);
    routeline::drawSocket(painter, from, style);
}

void LineOut::drawDisabledText(QPainter &painter) const
{
    const QRectF gap(sourceBox(0).right(), 0, outputBox(0).left() - sourceBox(0).right(), height());
    QRectF pill = painter.boundingRect(gap, Qt::AlignCenter, m_disabledText);
    pill.adjust(-14, -9, 14, 9);
    painter.setPen(QPen(m_border, 1));
    painter.setBrush(m_box);
    painter.drawRoundedRect(pill, roundness, roundness);
    painter.setPen(m_text);
    painter.drawText(pill, Qt::AlignCenter, m_disabledText);
}
