#pragma once

#include "widgets/drawlevelmeter.h"

#include <array>
#include <cstdint>
#include <vector>

namespace mixer {

struct Context;

/// The 34 level meters: those of the channels, of the pairs' sides and of the master. A pair's
/// meters show the levels of its two channels, linked or not. GUI thread only.
class MeterRule
{
public:
    explicit MeterRule(Context &context);

    /// Takes the levels that the device sent last, asks for new ones, and moves the meters; every
    /// 100 ms. False when the device did not answer well: then nothing is shown.
    bool poll();

    /// No device answers: no meter may look as if one did.
    void clear();

private:
    /// Inputs 1 to 16, then the master's left and right.
    using Levels = std::array<std::uint16_t, 18>;

    bool fetch(Levels &levels);
    void show(const Levels &levels);

    struct Entry
    {
        DrawLevelMeter meter;
        std::size_t channel; ///< index of its level
    };

    Context &m_context;
    std::vector<Entry> m_meters;
    int m_ticks = 0; ///< of the current second
};

} // namespace mixer
