#include "mixer/meters.h"

#include "device/qvxdevice.h"

#include <algorithm>

namespace mixer {
namespace {

constexpr int ticksPerSecond = 10;
constexpr int groupSize = 4; ///< meters of each two channels: the channels, then the pair's sides

/// Returns the index of the level that a meter shows.
std::size_t levelOf(int meter)
{
    constexpr int inputMeters = 2 * tamber::inputCount;
    if (meter >= inputMeters) return static_cast<std::size_t>(meter) - tamber::inputCount;
    return static_cast<std::size_t>(meter) / groupSize * 2 + static_cast<std::size_t>(meter) % 2;
}

/// Returns the index of a record's level, or -1 if no meter shows it.
int levelIndex(const vxctl::MeterRecord &record)
{
    const auto within = [&](int last) { return record.ch_no >= 1 && record.ch_no <= last; };
    if (record.ch_type == vxctl::channelInput && within(tamber::inputCount))
        return record.ch_no - 1;
    const bool master = record.ch_type == vxctl::channelMaster && within(tamber::masterSides);
    return master ? tamber::inputCount + record.ch_no - 1 : -1;
}

} // namespace

bool Meters::poll()
{
    Levels levels{};
    if (!fetch(levels)) return false;
    m_levels = levels;
    show(levels);
    return true;
}

void Meters::clear()
{
    m_levels = {};
    for (LevelMeter &meter : m_meters)
        meter.clear();
}

void Meters::clearClips()
{
    for (LevelMeter &meter : m_meters)
        meter.clearClip();
}

Meters::Readings Meters::readings() const
{
    Readings readings;
    std::transform(m_meters.begin(), m_meters.end(), readings.begin(), [](const LevelMeter &meter) {
        return meter.reading();
    });
    return readings;
}

MeterReading Meters::ofInput(int input) const
{
    const int pair = (input - 1) / 2;
    const int index = 4 * pair + (input - 1) % 2;
    return m_meters[static_cast<std::size_t>(index)].reading();
}

MeterReading Meters::ofMaster(int side) const
{
    const int index = count - tamber::masterSides + side - 1;
    return m_meters[static_cast<std::size_t>(index)].reading();
}

bool Meters::fetch(Levels &levels)
{
    std::array<vxctl::MeterRecord, vxctl::meterCount> records;
    int received = 0;
    const bool answered = m_device.get_meter(records.data(), vxctl::meterCount, received);
    if (!answered || received > vxctl::meterCount) return false;
    for (const vxctl::MeterRecord &record : records) {
        const int index = levelIndex(record);
        if (index < 0) continue;
        // A level above full scale is a fault of the reading, not an overload: show silence.
        const bool valid = record.level <= tamber::fullScale;
        levels[static_cast<std::size_t>(index)] = valid ? record.level : std::uint16_t{0};
    }
    return true;
}

void Meters::show(const Levels &levels)
{
    for (int meter = 0; meter < count; ++meter)
        m_meters[static_cast<std::size_t>(meter)].update(levels[levelOf(meter)]);
    if (++m_ticks < ticksPerSecond) return;
    m_ticks = 0;
    for (LevelMeter &meter : m_meters)
        meter.countPeakDown();
}

} // namespace mixer
