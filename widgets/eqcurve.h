#pragma once

#include "common/device.h"

#include <array>

/// What the EQ curve display draws: the four bands of one channel. A plain value, and the
/// arithmetic of its response in whole numbers. Any thread.
struct EqCurve
{
    enum class State {
        NoChannel, ///< none is shown
        Off,       ///< the channel's EQ is out of circuit
        On,
    };

    /// One band: 0 low, 1 high, 2 high-mid, 3 low-mid.
    struct Band
    {
        int gain = 0; ///< dB, -12 to 12
        int freq = 0; ///< step: 0 to 31 of the shelves, 0 to 63 of the middle bands
        int q = 0;    ///< step of the middle bands, 0 to 6
        bool operator==(const Band &o) const
        {
            return gain == o.gain && freq == o.freq && q == o.q;
        }
    };

    State state = State::NoChannel;
    std::array<Band, tamber::eqBandCount> bands{};
    bool lowCut = false;

    /// Height of the curve over the 0 dB line at a column (1 to 135), -39 to 39 pixels.
    int response(int column) const;

    bool operator==(const EqCurve &o) const
    {
        return state == o.state && bands == o.bands && lowCut == o.lowCut;
    }
};
