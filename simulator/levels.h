#pragma once

#include "simulator/mixerstate.h"

#include <array>
#include <cstdint>

namespace simulator {

constexpr std::uint16_t fullScale = 32768;

/// What the device's meters show at one moment, linear: peaks with 32768 for full scale and above,
/// and what the compressors leave of the gain.
struct Levels
{
    std::array<std::uint16_t, inputCount> inputs; ///< behind EQ and compressor, before the fader
    std::array<std::uint16_t, 2> master;
    std::array<std::uint16_t, inputCount> gainReduction; ///< 32767 for none
};

/// Runs the input signals through the mixer: phase, equalizer, compressor, fader, mute, solo and
/// pan into the master. The compressors of a linked pair follow the louder side.
/// @param seconds the moment; the peaks are those of the 32 ms before it.
Levels levelsAt(const MixerState &state, double seconds);

} // namespace simulator
