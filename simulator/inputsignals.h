#pragma once

/// The signals at the sixteen inputs of the simulated device: tones, noise, drum-like bursts and
/// silence. Pure functions of time; any thread.
namespace simulator {

/// Returns the value of an input (0 to 15) at a time in seconds. The value is -1 to 1.
double inputSample(int input, double seconds);

/// Returns the dominant frequency of an input (0 to 15), in hertz.
double inputFrequency(int input);

} // namespace simulator
