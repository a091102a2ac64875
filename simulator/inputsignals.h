#pragma once

/// What is plugged into the simulated device: sixteen sources, among them tones, noise, drum-like
/// bursts and silence. Pure functions of time; any thread.
namespace simulator {

/// The value of an input (0 to 15) at a time in seconds, -1 to 1.
double inputSample(int input, double seconds);

/// The frequency, in hertz, at which most of an input lies.
double inputFrequency(int input);

} // namespace simulator
