#include "app/metersview.h"

#include <QLabel>

using namespace mixer;

MetersView::MetersView(const MixerWidgets &widgets)
{
    const auto add = [this](const SideWidgets &side) {
        m_meters.emplace_back(side.meter, side.peak);
    };
    for (int left = 1; left < trackCount; left += 2) {
        add(widgets.of(track(left)).sides[0]);
        add(widgets.of(track(left + 1)).sides[0]);
        for (const SideWidgets &side : widgets.of(pair(left)).sides)
            add(side);
    }
    for (const SideWidgets &side : widgets.of(master()).sides)
        add(side);
}

void MetersView::show(const Meters::Readings &readings)
{
    for (std::size_t i = 0; i < m_meters.size(); ++i)
        m_meters[i].show({readings[i].gap, readings[i].peak});
}
