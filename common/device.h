#pragma once

/// Facts of the device that more than one module relies on. The simulated device has its own
/// copies, and a test compares them with these. This header includes nothing.
namespace tamber {

constexpr int inputCount = 16;
constexpr int pairCount = inputCount / 2; ///< 1-2, 3-4, ... 15-16; no other pairs exist
constexpr int masterSides = 2;            ///< left and right
constexpr int lineOutCount = 8;
constexpr int computerCount = 8; ///< computer playback channels
constexpr int eqBandCount = 4;
constexpr int fullScale = 32768; ///< linear level at full scale; gain reduction at unity gain

} // namespace tamber
