#pragma once

#include "simulator/mixerstate.h"

/// How the simulated DSP changes a channel's level. The equalizer and compressor are plausible
/// approximations, not real filters. Pure functions; any thread.
namespace simulator {

/// The tables of the DSP, which do not depend on those of the panel. A step outside a table counts
/// as its nearest entry. Bands are numbered as in the command: 0 low, 1 high, 2 high-mid, 3
/// low-mid.
double bandFrequency(int band, int step); ///< Hertz
double bandQuality(int step);
double compressionRatio(int step); ///< The limiter of the last step has the ratio 1e9.

/// Returns the gain of the equalizer at a frequency (hertz), in dB. The gain is 0 while it is off.
double eqGain(const Eq &eq, double frequency);

/// Returns by how much the compressor lowers a level (dB relative to full scale), in dB. The result
/// is 0 while it is off.
double reduction(const Compressor &compressor, double level);

/// Returns the make-up gain of the compressor, in dB. The gain is 0 while it is off.
double makeUpGain(const Compressor &compressor);

} // namespace simulator
