#include "widgets/drawlevelmeter.h"

#include "common/geometry.h"

#include <QWidget>

DrawLevelMeter::DrawLevelMeter(QWidget *bar, QWidget *peak)
    : m_bar(bar), m_peak(peak), m_shown{geometry::meterHeight, false}
{
    m_bar->hide();
    m_peak->hide();
}

void DrawLevelMeter::show(const Reading &reading)
{
    if (reading.gap != m_shown.gap) {
        const int top = geometry::meterTop + reading.gap;
        m_bar->setGeometry(m_bar->x(), top, m_bar->width(), geometry::meterBottom - top + 1);
        m_bar->setVisible(reading.gap < geometry::meterHeight);
    }
    if (reading.peak != m_shown.peak) m_peak->setVisible(reading.peak);
    m_shown = reading;
}
