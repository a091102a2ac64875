#include "mixer/meterrule.h"

#include "device/qvxdevice.h"
#include "mixer/context.h"

#include <QLabel>

namespace mixer {
namespace {

constexpr int ticksPerSecond = 10;
constexpr std::size_t masterLevel = 16;

DrawLevelMeter meterOf(const SideView &side)
{
    return DrawLevelMeter(side.meter, side.peak, meterTop);
}

/// Place of a record's level, or -1 for one that no meter shows.
int levelIndex(const vxctl::MeterRecord &record)
{
    const bool input =
        record.ch_type == vxctl::channelInput && record.ch_no >= 1 && record.ch_no <= trackCount;
    if (input) return record.ch_no - 1;
    const bool master =
        record.ch_type == vxctl::channelMaster && record.ch_no >= 1 && record.ch_no <= 2;
    return master ? static_cast<int>(masterLevel) + record.ch_no - 1 : -1;
}

} // namespace

MeterRule::MeterRule(Context &context) : m_context(context)
{
    for (int left = 1; left < trackCount; left += 2) {
        const auto channel = static_cast<std::size_t>(left - 1);
        const StripView &stereo = context.viewOf(pair(left));
        m_meters.push_back({meterOf(context.viewOf(track(left)).sides[0]), channel});
        m_meters.push_back({meterOf(context.viewOf(track(left + 1)).sides[0]), channel + 1});
        m_meters.push_back({meterOf(stereo.sides[0]), channel});
        m_meters.push_back({meterOf(stereo.sides[1]), channel + 1});
    }
    const StripView &masterView = context.viewOf(master());
    m_meters.push_back({meterOf(masterView.sides[0]), masterLevel});
    m_meters.push_back({meterOf(masterView.sides[1]), masterLevel + 1});
}

bool MeterRule::poll()
{
    Levels levels{};
    if (!fetch(levels)) return false;
    show(levels);
    return true;
}

void MeterRule::clear()
{
    for (Entry &entry : m_meters)
        entry.meter.clear();
}

bool MeterRule::fetch(Levels &levels)
{
    std::array<vxctl::MeterRecord, vxctl::meterCount> records;
    int count = 0;
    const bool answered = m_context.device.get_meter(records.data(), vxctl::meterCount, count);
    if (!answered || count > vxctl::meterCount) return false;
    for (const vxctl::MeterRecord &record : records) {
        const int index = levelIndex(record);
        if (index < 0) continue;
        // A reading that is out of range is no overload but a fault: it shows as silence.
        const bool valid = record.level <= DrawLevelMeter::fullScale;
        levels[static_cast<std::size_t>(index)] = valid ? record.level : std::uint16_t{0};
    }
    return true;
}

void MeterRule::show(const Levels &levels)
{
    for (Entry &entry : m_meters)
        entry.meter.update(levels[entry.channel]);
    if (++m_ticks < ticksPerSecond) return;
    m_ticks = 0;
    for (Entry &entry : m_meters)
        entry.meter.countPeakDown();
}

} // namespace mixer
