#include "widgets/drawlevelmeter.h"

#include "common/geometry.h"
#include "widgets/clipmark.h"

namespace {

constexpr int empty = geometry::meterHeight;

} // namespace

DrawLevelMeter::DrawLevelMeter(const Parts &parts)
    : m_parts(parts), m_shown{empty, empty, false, false}
{
    m_parts.bar->hide();
    m_parts.hold->hide();
    m_parts.peak->hide();
}

void DrawLevelMeter::show(const Reading &reading)
{
    if (reading.gap != m_shown.gap) {
        QWidget *bar = m_parts.bar;
        const int top = geometry::meterTop + reading.gap;
        bar->setGeometry(bar->x(), top, bar->width(), geometry::meterBottom - top + 1);
        bar->setVisible(reading.gap < empty);
    }
    if (reading.hold != m_shown.hold) {
        m_parts.hold->move(m_parts.hold->x(), geometry::meterTop + reading.hold);
        m_parts.hold->setVisible(reading.hold < empty);
    }
    if (reading.peak != m_shown.peak) m_parts.peak->setVisible(reading.peak);
    if (reading.clip != m_shown.clip) m_parts.clip->setLit(reading.clip);
    m_shown = reading;
}
