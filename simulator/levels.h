#pragma once

#include "simulator/mixerstate.h"

#include <array>
#include <cstdint>

namespace simulator {

constexpr std::uint16_t fullScale = 32768;

/// The readings of the device's meters at one moment. Levels are linear peaks, with 32768 for full
/// scale and above. Gain reduction is the linear gain of the compressor.
struct Levels
{
    std::array<std::uint16_t, inputCount> inputs; ///< after EQ and compressor, before the fader
    std::array<std::uint16_t, 2> master;          ///< left, right; after the fader
    std::array<std::uint16_t, inputCount> gainReduction; ///< 32767 for none
};

/// Runs the input signals through the mixer (phase, equalizer, compressor, fader, mute, solo, pan,
/// master) and returns the meter readings. Both compressors of a linked pair follow the louder
/// side. Pure function; any thread.
/// @param seconds the moment; the peaks are taken over the 32 ms before it
Levels levelsAt(const MixerState &state, double seconds);

} // namespace simulator
