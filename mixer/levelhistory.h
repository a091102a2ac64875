#pragma once

#include "mixer/gainreduction.h"
#include "mixer/meters.h"

#include <deque>
#include <optional>

namespace mixer {

/// What a compressor does at one moment, in decibels.
struct LevelSample
{
    double input = silentLevel; ///< the level that enters the compressor
    double reduction = 0;       ///< 0 or more

    static constexpr double silentLevel = -100;
};

/// Returns the level that enters a strip's compressor, and its reduction. The device meters an
/// input after its compressor, so reduction and make-up gain are taken out again. Of a pair it
/// takes the louder side, which the device's compressor follows too. Full scale is the highest
/// level that the meters can show; a louder signal reads as less than it is.
LevelSample compressorLevels(
    const Meters &meters, const GainReduction &reduction, const StripId &strip,
    const storage::Values &values);

/// The last ten seconds of the edited strip's compressor, from the values that the panel polls for
/// its meters. It sends nothing itself. GUI thread only.
class LevelHistory
{
public:
    static constexpr int length = 100; ///< samples, ten a second

    /// Takes the values of the last poll. Call it every 100 ms after the poll. Another strip begins
    /// a new history; without a strip the history is empty.
    void take(
        const Meters &meters, const GainReduction &reduction, const std::optional<StripId> &strip,
        const storage::Values &values);

    /// Returns the samples, the latest one last.
    const std::deque<LevelSample> &samples() const { return m_samples; }

private:
    std::deque<LevelSample> m_samples;
    std::optional<StripId> m_strip;
};

} // namespace mixer
