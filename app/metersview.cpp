#include "app/metersview.h"

#include "common/geometry.h"
#include "widgets/accessiblecontrols.h"
#include "widgets/clipmark.h"
#include "widgets/drawlevelmeter.h"

#include <QLabel>

using namespace mixer;

namespace {

/// Returns the level of a gap in words.
QString levelAt(int gap)
{
    const std::optional<double> level = LevelMeter::decibels(gap);
    return level ? QStringLiteral("%1 dB").arg(static_cast<int>(*level))
                 : QStringLiteral("no signal");
}

} // namespace

MetersView::MetersView(const MixerWidgets &widgets)
{
    m_readings.fill({geometry::meterHeight});
    for (int left = 1; left < trackCount; left += 2) {
        add(widgets.of(track(left)).sides[0]);
        add(widgets.of(track(left + 1)).sides[0]);
        for (const SideWidgets &side : widgets.of(pair(left)).sides)
            add(side);
    }
    for (const SideWidgets &side : widgets.of(master()).sides)
        add(side);
}

/// Gives the parts of a meter words for screen readers.
void MetersView::add(const SideWidgets &side)
{
    const std::size_t index = m_meters.size();
    m_meters.push_back(side.meter);
    connect(side.clip, &ClipMark::clicked, this, &MetersView::clearRequested);
    accessiblecontrols::setWords(
        side.bar, [this, index] { return levelAt(m_readings[index].gap); });
    accessiblecontrols::setWords(
        side.hold, [this, index] { return levelAt(m_readings[index].hold); });
    accessiblecontrols::setWords(side.clip, [this, index] {
        return m_readings[index].clip ? QStringLiteral("lit") : QStringLiteral("off");
    });
    accessiblecontrols::setWords(side.peak, [this, index] {
        return m_readings[index].peak ? QStringLiteral("lit") : QStringLiteral("off");
    });
}

void MetersView::show(const Meters::Readings &readings)
{
    m_readings = readings;
    for (std::size_t i = 0; i < m_meters.size(); ++i) {
        const MeterReading &reading = readings[i];
        m_meters[i]->setReading({reading.gap, reading.hold, reading.peak, reading.clip});
    }
}
