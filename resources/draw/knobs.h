#pragma once

class QPainter;

/// The knobs of the equalizer and the compressor.
namespace knobs {

constexpr int frameCount = 21;
constexpr int size = 36;

/// The clock position of a frame in hundreds, as it stands in its name: 700, 730, ... 1700.
int clockOf(int frame);
/// 36 x 36; the pointer stands at the frame's clock position.
void knob(QPainter &painter, int frame);

} // namespace knobs
