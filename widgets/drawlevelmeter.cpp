#include "widgets/drawlevelmeter.h"

#include "common/geometry.h"
#include "widgets/clipmark.h"
#include "widgets/colours.h"
#include "widgets/sharppixmap.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace {

constexpr int empty = geometry::meterHeight;
constexpr int edge = 1;

/// Returns the rows of a meter between two gaps, including the lower one's first row.
QRect rowsBetween(int gap, int other)
{
    const auto [upper, lower] = std::minmax(gap, other);
    return {edge, edge + upper, geometry::meterWidth, lower - upper + 1};
}

} // namespace

DrawLevelMeter::DrawLevelMeter(const Parts &parts, QWidget *parent)
    : QWidget(parent), m_parts(parts), m_shown{empty, empty, false, false}
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(QRect(m_parts.bar->x(), geometry::meterTop, geometry::meterWidth, empty + 1)
                    .adjusted(-edge, -edge, edge, edge));
    // Otherwise, Qt would repaint the strip wherever they move.
    m_parts.bar->setAttribute(Qt::WA_DontShowOnScreen);
    m_parts.hold->setAttribute(Qt::WA_DontShowOnScreen);
    m_parts.bar->hide();
    m_parts.hold->hide();
    m_parts.peak->hide();
}

void DrawLevelMeter::setReading(const Reading &reading)
{
    if (reading.gap != m_shown.gap) {
        QWidget *bar = m_parts.bar;
        const int top = geometry::meterTop + reading.gap;
        bar->setGeometry(bar->x(), top, bar->width(), geometry::meterBottom - top + 1);
        bar->setVisible(reading.gap < empty);
        update(rowsBetween(reading.gap, m_shown.gap));
    }
    if (reading.hold != m_shown.hold) {
        m_parts.hold->move(m_parts.hold->x(), geometry::meterTop + reading.hold);
        m_parts.hold->setVisible(reading.hold < empty);
        update(rowsBetween(reading.hold, reading.hold));
        update(rowsBetween(m_shown.hold, m_shown.hold));
    }
    if (reading.peak != m_shown.peak) m_parts.peak->setVisible(reading.peak);
    if (reading.clip != m_shown.clip) m_parts.clip->setLit(reading.clip);
    m_shown = reading;
}

void DrawLevelMeter::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    const QRect inside = rect().adjusted(edge, edge, -edge, -edge);
    if (!inside.contains(event->rect())) {
        constexpr int half = 200; // percent, as QColor::darker() counts
        painter.fillRect(rect(), isEnabled() ? colours::edge : colours::edge.darker(half));
    }
    painter.setClipRect(inside);
    QRect unlit = inside;
    if (m_shown.gap < empty) {
        if (!qFuzzyCompare(m_image.devicePixelRatio(), devicePixelRatioF()) || m_image.isNull())
            m_image =
                sharpPixmap(QStringLiteral(":/Resource/track/meter.png"), devicePixelRatioF());
        painter.drawPixmap(inside.topLeft(), m_image);
        unlit.setHeight(m_shown.gap);
    }
    painter.fillRect(unlit, colours::well);
    if (m_shown.hold < empty)
        painter.fillRect(rowsBetween(m_shown.hold, m_shown.hold), colours::text);
}
