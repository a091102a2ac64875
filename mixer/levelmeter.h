#pragma once

#include <cstdint>

namespace mixer {

/// What a level meter shows.
struct MeterReading
{
    int gap = 0;       ///< unlit rows above the bar, 0 to 106
    bool peak = false; ///< whether the peak mark is lit
};

/// The movement of one level meter, two rows a decibel. A rising level is shown at once; a falling
/// bar sinks by two rows an update. A plain value; any thread.
class LevelMeter
{
public:
    /// Returns the unlit rows above the bar for a level, 0 to 106. Nothing is lit below -53 dB.
    /// Pure.
    /// @param level linear, 32768 for full scale
    static int gap(std::uint16_t level);

    /// Moves the bar one step towards a level. Lights the peak mark if the level is within 1 dB of
    /// full scale.
    /// @param level linear, 32768 for full scale
    void update(std::uint16_t level);
    /// Empties the bar and clears the peak mark at once.
    void clear();
    /// Call this once a second. A peak mark that is not set again goes out after one to two
    /// seconds.
    void countPeakDown();

    MeterReading reading() const { return {m_placedGap, m_peakHold > 0}; }

private:
    static constexpr int empty = 106;

    int m_shownGap = empty;
    int m_placedGap = empty; ///< gap of the bar as it is drawn
    int m_peakHold = 0;      ///< seconds for which the peak mark stays lit
};

} // namespace mixer
