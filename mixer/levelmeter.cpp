#include "mixer/levelmeter.h"

#include "common/device.h"
#include "common/geometry.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace mixer {
namespace {

constexpr int rowsPerDecibel = 2;
constexpr int lowestDecibel = -60;
constexpr std::size_t thresholdCount = 61; // one for each whole decibel from -60 to 0
constexpr int peakSeconds = 2;             // the longest time that a peak mark stays lit

/// Returns the linear level of each whole decibel from -60 to 0.
std::array<int, thresholdCount> thresholds()
{
    std::array<int, thresholdCount> levels;
    for (std::size_t i = 0; i < thresholdCount; ++i) {
        const double decibels = static_cast<double>(i) + lowestDecibel;
        levels[i] = static_cast<int>(tamber::fullScale * std::pow(10, decibels / 20));
    }
    return levels;
}

} // namespace

int LevelMeter::gap(std::uint16_t level)
{
    static_assert(empty == geometry::meterHeight, "an empty meter is as high as its widget");
    static const std::array<int, thresholdCount> levels = thresholds();
    const auto above = std::upper_bound(levels.begin(), levels.end(), level);
    const auto place = static_cast<int>(above - levels.begin());
    return std::clamp((static_cast<int>(thresholdCount) - 1 - place) * rowsPerDecibel, 0, empty);
}

std::optional<double> LevelMeter::decibels(int gap)
{
    return gap < empty ? std::make_optional(-double(gap) / rowsPerDecibel) : std::nullopt;
}

void LevelMeter::update(std::uint16_t level)
{
    const int wanted = gap(level);
    if (m_shownGap < wanted) {
        m_placedGap = m_shownGap;
        m_shownGap += rowsPerDecibel;
    } else {
        m_placedGap = m_shownGap = wanted;
    }
    holdMaximum();
    if (wanted != 0) return;
    m_peakHold = peakSeconds;
    m_clipped = true;
}

void LevelMeter::holdMaximum()
{
    if (m_placedGap <= m_heldGap || m_heldUpdates == 0) {
        m_heldGap = m_placedGap;
        m_heldUpdates = holdUpdates - 1;
    } else {
        --m_heldUpdates;
    }
}

void LevelMeter::clear()
{
    const bool clipped = m_clipped;
    *this = LevelMeter();
    m_clipped = clipped;
}

void LevelMeter::countPeakDown()
{
    if (m_peakHold > 0) --m_peakHold;
}

} // namespace mixer
