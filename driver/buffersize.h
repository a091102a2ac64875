#pragma once

#include <QString>

#include <cstdint>

/// The lengths of the audio driver's buffer that the panel offers. Step 0 of the slider is the
/// shortest. Pure functions; any thread.
namespace driver {

constexpr int bufferStepCount = 11;
constexpr int defaultFrames = 256; ///< what the driver uses if no length is stored

/// Returns the length of a step in samples.
// contract: an invalid step counts as step 8 (512 samples).
int bufferFrames(int step);
/// Returns the label of a step, right-aligned with leading blanks: " 128 Samples".
QString bufferLabel(int step);

/// Returns how long a buffer lasts: "5.3 ms" for 256 samples at 48000 hertz. Times below one
/// millisecond have two decimals.
/// @param hertz the sample rate, not 0
QString bufferTime(int frames, std::uint32_t hertz);

/// Returns the step of a stored length.
// contract: only the low 16 bits count, and an unknown length gives the step of 256.
int bufferStep(qint64 frames);

} // namespace driver
