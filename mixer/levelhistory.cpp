#include "mixer/levelhistory.h"

#include "mixer/state.h"

#include <algorithm>
#include <cmath>

namespace mixer {

LevelSample compressorLevels(
    const Meters &meters, const GainReduction &reduction, const StripId &strip,
    const storage::Values &values)
{
    std::uint16_t level = 0;
    for (const int input : channelsOf(strip))
        level = std::max(level, meters.level(input));
    LevelSample sample;
    sample.reduction = reduction.decibels();
    if (level == 0) return sample;
    const Comp comp = compOf(values, strip);
    const double added = comp.on ? comp.gain - sample.reduction : 0;
    sample.input = std::clamp(
        20 * std::log10(double(level) / tamber::fullScale) - added, LevelSample::silentLevel, 0.0);
    return sample;
}

void LevelHistory::take(
    const Meters &meters, const GainReduction &reduction, const std::optional<StripId> &strip,
    const storage::Values &values)
{
    if (strip != m_strip) m_samples.clear();
    m_strip = strip;
    if (!strip) return;
    m_samples.push_back(compressorLevels(meters, reduction, *strip, values));
    if (m_samples.size() > length) m_samples.pop_front();
}

} // namespace mixer
