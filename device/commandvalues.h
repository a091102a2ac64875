#pragma once

#include <cstdint>

/// The values of the two commands that carry many values. The mixer's rules fill them in, and every
/// layer below passes them on unchanged. All bytes are those that the message carries. No Qt.

/// One band of a channel's equalizer.
struct Eq
{
    std::uint8_t on = 0;
    std::uint8_t gain = 0; ///< dB in two's complement
    std::uint8_t freq = 0; ///< step
    std::uint8_t q = 0;    ///< step; in the low band the low-cut switch, in the high band 0

    bool operator==(const Eq &o) const
    {
        return on == o.on && gain == o.gain && freq == o.freq && q == o.q;
    }
};

/// A channel's compressor.
struct Comp
{
    std::uint8_t on = 0;
    std::uint8_t threshold = 0; ///< step
    std::uint8_t ratio = 0;     ///< step
    std::uint8_t attack = 0;    ///< step
    std::uint8_t release = 0;   ///< step
    std::uint8_t gain = 0;      ///< dB
    std::uint8_t link = 0;      ///< 1 for a linked pair

    bool operator==(const Comp &o) const
    {
        return on == o.on && threshold == o.threshold && ratio == o.ratio && attack == o.attack &&
               release == o.release && gain == o.gain && link == o.link;
    }
};
