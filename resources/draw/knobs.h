#pragma once

class QPainter;

/// Images of the knobs of the equalizer and the compressor.
namespace knobs {

constexpr int frameCount = 21;
constexpr int size = 36;

/// Returns the number in the file name of a frame, which is the clock position of the pointer: 700
/// for 7 o'clock, 730, ... 1700.
// contract: the names of the images.
int clockOf(int frame);
/// Draws a frame of 36 x 36 pixels. The pointer is at the frame's clock position.
void knob(QPainter &painter, int frame);

} // namespace knobs
