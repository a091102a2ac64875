#include "app/metersview.h"

#include "common/geometry.h"
#include "widgets/accessiblecontrols.h"

#include <QLabel>

using namespace mixer;

MetersView::MetersView(const MixerWidgets &widgets)
{
    m_readings.fill({geometry::meterHeight, false});
    for (int left = 1; left < trackCount; left += 2) {
        add(widgets.of(track(left)).sides[0]);
        add(widgets.of(track(left + 1)).sides[0]);
        for (const SideWidgets &side : widgets.of(pair(left)).sides)
            add(side);
    }
    for (const SideWidgets &side : widgets.of(master()).sides)
        add(side);
}

/// Gives a meter and its peak mark words for screen readers.
void MetersView::add(const SideWidgets &side)
{
    const std::size_t index = m_meters.size();
    m_meters.emplace_back(side.meter, side.peak);
    accessiblecontrols::setWords(side.meter, [this, index] {
        constexpr int rowsPerDecibel = 2;
        const int gap = m_readings[index].gap;
        if (gap >= geometry::meterHeight) return QStringLiteral("no signal");
        return QStringLiteral("%1 dB").arg(-gap / rowsPerDecibel);
    });
    accessiblecontrols::setWords(side.peak, [this, index] {
        return m_readings[index].peak ? QStringLiteral("lit") : QStringLiteral("off");
    });
}

void MetersView::show(const Meters::Readings &readings)
{
    m_readings = readings;
    for (std::size_t i = 0; i < m_meters.size(); ++i)
        m_meters[i].show({readings[i].gap, readings[i].peak});
}
