#pragma once

#include <array>
#include <cstddef>

/// The signals at the sixteen inputs of the simulated device: tones, noise, drum-like bursts and
/// silence. Pure functions of time; any thread.
namespace simulator {

constexpr std::size_t blockSize = 256;
constexpr int blockRate = 8000; ///< hertz; sufficient for finding peaks

/// The 32 ms of a signal before some moment. Samples are -1 to 1.
using Block = std::array<double, blockSize>;

/// Returns the block of an input (0 to 15) that ends at a time in seconds. Before the time 0 there
/// is silence.
Block inputBlock(int input, double seconds);

/// Returns the dominant frequency of an input (0 to 15), in hertz.
double inputFrequency(int input);

} // namespace simulator
