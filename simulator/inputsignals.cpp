#include "simulator/inputsignals.h"

#include <array>
#include <cmath>
#include <cstdint>

namespace simulator {
namespace {

constexpr double twoPi = 6.283185307179586;

enum class Shape {
    Silence,
    Tone,  ///< of constant level
    Swell, ///< a tone that rises and falls once per period
    Noise,
    Burst, ///< a tone that starts at full level once per period and decays
};

struct SignalRow
{
    Shape shape;
    double level;     ///< peak, 1 is full scale
    double frequency; ///< hertz; for noise its sample rate
    double period;    ///< seconds
};

// The session as a whole does not clip with all faders at 0 dB.
constexpr double headroom = 0.35;

// A small recording session. The two key channels carry the same tone, so that inverting the phase
// of one cancels them. Nothing is connected to the last two inputs.
constexpr std::array<SignalRow, 16> rows = {{
    {Shape::Burst, 0.90, 60, 0.5},    // kick
    {Shape::Burst, 0.70, 190, 1.0},   // snare
    {Shape::Burst, 0.35, 3100, 0.25}, // hi-hat
    {Shape::Burst, 0.50, 110, 2.0},   // tom
    {Shape::Tone, 0.45, 82, 0},       // bass
    {Shape::Swell, 0.30, 196, 6.0},   // organ
    {Shape::Tone, 0.40, 440, 0},      // keys, left
    {Shape::Tone, 0.40, 440, 0},      // keys, right
    {Shape::Swell, 0.55, 330, 3.0},   // guitar
    {Shape::Swell, 0.50, 247, 4.5},   // second guitar
    {Shape::Swell, 0.65, 523, 7.0},   // voice
    {Shape::Swell, 0.25, 659, 5.0},   // second voice
    {Shape::Noise, 0.02, 4000, 0},    // a noisy line
    {Shape::Noise, 0.20, 4000, 0},    // ambience
    {Shape::Silence, 0, 0, 0},
    {Shape::Silence, 0, 0, 0},
}};

/// Returns sample n of a repeatable noise, -1 to 1. It is a hash of n.
double noise(std::uint64_t n)
{
    n = (n ^ (n >> 30)) * 0xBF58476D1CE4E5B9ULL;
    n = (n ^ (n >> 27)) * 0x94D049BB133111EBULL;
    return static_cast<double>((n ^ (n >> 31)) >> 11) / 4503599627370496.0 - 1.0;
}

double envelope(const SignalRow &row, double seconds)
{
    constexpr double decay = 9; // 20 dB in a quarter of a second
    switch (row.shape) {
    case Shape::Swell:
        return 0.5 - 0.5 * std::cos(twoPi * seconds / row.period);
    case Shape::Burst:
        return std::exp(-decay * std::fmod(seconds, row.period));
    case Shape::Tone:
    case Shape::Noise:
        return 1;
    case Shape::Silence:
        break;
    }
    return 0;
}

} // namespace

double inputSample(int input, double seconds)
{
    const SignalRow &row = rows[static_cast<std::size_t>(input)];
    if (row.shape == Shape::Silence) return 0;
    const double carrier = row.shape == Shape::Noise
                               ? noise(
                                     static_cast<std::uint64_t>(seconds * row.frequency) * 16 +
                                     static_cast<unsigned>(input))
                               : std::sin(twoPi * row.frequency * seconds);
    return headroom * row.level * envelope(row, seconds) * carrier;
}

double inputFrequency(int input)
{
    constexpr double forSilence = 1000; // any value: silence has no frequency
    const SignalRow &row = rows[static_cast<std::size_t>(input)];
    return row.frequency > 0 ? row.frequency : forSilence;
}

} // namespace simulator
