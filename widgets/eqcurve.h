#pragma once

#include "common/device.h"

#include <array>

/// The response of one channel's EQ, as the display draws it. A plain value, computed in whole
/// numbers; any thread.
struct EqCurve
{
    enum class State {
        NoChannel, ///< no channel is shown
        Off,       ///< the channel's EQ is switched off
        On,
    };

    /// One EQ band.
    struct Band
    {
        int gain = 0; ///< dB, -12 to 12
        int freq = 0; ///< step, 0 to 31 for the low and high band, 0 to 63 for the middle bands
        int q = 0;    ///< step, 0 to 6; used by the middle bands only
        bool operator==(const Band &o) const
        {
            return gain == o.gain && freq == o.freq && q == o.q;
        }
    };

    State state = State::NoChannel;
    std::array<Band, tamber::eqBandCount> bands{}; ///< low, high, high-mid, low-mid
    bool lowCut = false;
    /// The columns at which the bands are marked, in the order of the bands.
    std::array<int, tamber::eqBandCount> marks{};

    /// Returns the curve's height above the 0 dB line at a column (1 to 135), in pixels, -39 to 39.
    int response(int column) const;

    bool operator==(const EqCurve &o) const
    {
        return state == o.state && bands == o.bands && lowCut == o.lowCut && marks == o.marks;
    }
};
