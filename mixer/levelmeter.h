#pragma once

#include <cstdint>

namespace mixer {

/// What a level meter shows.
struct MeterReading
{
    int gap = 0;       ///< the unlit rows above the bar
    bool peak = false; ///< the peak mark
};

/// How a level meter moves: two rows a decibel; a rising level is shown at once, a falling one
/// sinks by two rows an update. A plain value; any thread.
class LevelMeter
{
public:
    /// The unlit part of the bar for a level, linear with 32768 for full scale: 0 to 106 rows.
    /// Nothing is lit below -53 dB. Pure.
    static int gap(std::uint16_t level);

    /// One step towards a level. Within 1 dB of full scale the peak mark is set.
    void update(std::uint16_t level);
    /// There is nothing to show: bar and mark go at once.
    void clear();
    /// To be called once a second: a mark that was not set again goes after one to two seconds.
    void countPeakDown();

    MeterReading reading() const { return {m_placedGap, m_peakHold > 0}; }

private:
    static constexpr int empty = 106;

    int m_shownGap = empty;
    int m_placedGap = empty; ///< of the bar as it is drawn
    int m_peakHold = 0;      ///< seconds
};

} // namespace mixer
