#pragma once

#include "simulator/mixerstate.h"

/// What the device's DSP does to a channel's level: a believable equalizer and compressor, not the
/// filters of a real one. Pure; any thread.
namespace simulator {

/// How much the equalizer raises a frequency (hertz), in dB; 0 while it is off.
double eqGain(const Eq &eq, double frequency);

/// How much the compressor takes from a level (dB below full scale), in dB; 0 while it is off.
double reduction(const Compressor &compressor, double level);

/// What the compressor adds, in dB; 0 while it is off.
double makeUpGain(const Compressor &compressor);

} // namespace simulator
