#pragma once

#include <cstdint>
#include <optional>

namespace mixer {

/// What a level meter shows.
struct MeterReading
{
    int gap = 0;       ///< unlit rows above the bar, 0 to 106
    int hold = 106;    ///< unlit rows above the line at the bar's maximum; 106 for no line
    bool peak = false; ///< whether the peak mark is lit
    bool clip = false; ///< whether the clip memory is lit
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
    /// Returns the level in decibels that a gap shows, or nothing if no row is lit. Pure.
    static std::optional<double> decibels(int gap);

    /// Moves the bar one step towards a level. Lights the peak mark if the level is within 1 dB of
    /// full scale, and the clip memory with it.
    /// @param level linear, 32768 for full scale
    void update(std::uint16_t level);
    /// Empties the bar and clears line and peak mark at once. The clip memory stays.
    void clear();
    void clearClip() { m_clipped = false; }
    /// Call this once a second. A peak mark that is not set again goes out after one to two
    /// seconds.
    void countPeakDown();

    MeterReading reading() const { return {m_placedGap, m_heldGap, m_peakHold > 0, m_clipped}; }

    static constexpr int holdUpdates = 15; ///< for which the line stays: 1.5 s at ten a second

private:
    void holdMaximum();

    static constexpr int empty = 106;

    int m_shownGap = empty;
    int m_placedGap = empty; ///< gap of the bar as it is drawn
    int m_peakHold = 0;      ///< seconds for which the peak mark stays lit
    int m_heldGap = empty;   ///< the smallest gap of the last updates
    int m_heldUpdates = 0;   ///< updates for which the line stays
    bool m_clipped = false;
};

} // namespace mixer
