#pragma once

#include <QString>

/// The lengths of the audio driver's buffer that the panel offers: a table, from the shortest, by
/// the step of the slider. Pure functions; any thread.
namespace driver {

constexpr int bufferStepCount = 11;
constexpr int defaultFrames = 256; ///< what the driver takes while nothing is stored

/// The length at a step in samples; 512 at a step that is none.
int bufferFrames(int step);
/// How it is called. The texts are set right by blanks at their start: "  64 Samples".
QString bufferLabel(int step);

/// The step of a stored length, of which the low 16 bits count. Of a length that is not offered it
/// is the step of 256.
int bufferStep(qint64 frames);

} // namespace driver
