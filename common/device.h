#pragma once

/// The facts of the device that more than one module counts on, each defined once. The simulated
/// device keeps its own, which a test compares with these. Includes nothing.
namespace tamber {

constexpr int inputCount = 16;
constexpr int pairCount = inputCount / 2; ///< 1-2, 3-4, ... 15-16; there are no other pairs
constexpr int masterSides = 2;            ///< left and right
constexpr int lineOutCount = 8;
constexpr int computerCount = 8; ///< computer playback channels
constexpr int eqBandCount = 4;
constexpr int fullScale = 32768; ///< of a level, linear; and unity of a gain reduction

} // namespace tamber
