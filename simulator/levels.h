#pragma once

#include "simulator/mixerstate.h"

#include <array>
#include <cstdint>

namespace simulator {

constexpr std::uint16_t fullScale = 32768;

/// What the device's meters show at one moment: linear peaks, 32768 for full scale and above.
struct Levels
{
    std::array<std::uint16_t, inputCount> inputs; ///< before fader and mute
    std::array<std::uint16_t, 2> master;
};

/// Runs the input signals through the mixer: phase, fader, mute, solo and pan into the master.
/// @param seconds the moment; the peaks are those of the 32 ms before it.
Levels levelsAt(const MixerState &state, double seconds);

} // namespace simulator
