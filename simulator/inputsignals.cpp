#include "simulator/inputsignals.h"

#include <algorithm>
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

/// A sine and a cosine, sample by sample. The angle starts at 0 at the time 0.
class Oscillator
{
public:
    Oscillator(double frequency, double seconds)
        : m_sine(std::sin(twoPi * frequency * seconds)),
          m_cosine(std::cos(twoPi * frequency * seconds)),
          m_sineOfStep(std::sin(twoPi * frequency / blockRate)),
          m_cosineOfStep(std::cos(twoPi * frequency / blockRate))
    {
    }

    double sine() const { return m_sine; }
    double cosine() const { return m_cosine; }
    void advance()
    {
        const double sine = m_sine * m_cosineOfStep + m_cosine * m_sineOfStep;
        m_cosine = m_cosine * m_cosineOfStep - m_sine * m_sineOfStep;
        m_sine = sine;
    }

private:
    double m_sine;
    double m_cosine;
    double m_sineOfStep;
    double m_cosineOfStep;
};

/// The level of a burst, sample by sample.
class Decay
{
public:
    Decay(double period, double seconds)
        : m_period(period), m_age(std::fmod(seconds, period)), m_level(std::exp(-decay * m_age))
    {
    }

    double level() const { return m_level; }
    void advance()
    {
        m_age += 1.0 / blockRate;
        m_level *= m_perSample;
        if (m_age < m_period) return;
        m_age -= m_period;
        m_level = std::exp(-decay * m_age);
    }

private:
    static constexpr double decay = 9; // 20 dB in a quarter of a second

    double m_period;
    double m_age; // seconds
    double m_level;
    double m_perSample = std::exp(-decay / blockRate);
};

/// Sets samples `first` and later to a tone whose level follows `next`, a function that returns the
/// level of one sample after the other.
template <typename Level>
void fillWithTone(Block &block, std::size_t first, Oscillator tone, Level next)
{
    for (std::size_t n = first; n < blockSize; ++n, tone.advance())
        block[n] = next() * tone.sine();
}

void fillWithNoise(Block &block, std::size_t first, int input, double rate, double start)
{
    for (std::size_t n = first; n < blockSize; ++n) {
        const double seconds = start + static_cast<double>(n - first) / blockRate;
        block[n] =
            noise(static_cast<std::uint64_t>(seconds * rate) * 16 + static_cast<unsigned>(input));
    }
}

} // namespace

Block inputBlock(int input, double seconds)
{
    const SignalRow &row = rows[static_cast<std::size_t>(input)];
    Block block{};
    const double available = std::min<double>(std::floor(seconds * blockRate), blockSize);
    const std::size_t first = blockSize - static_cast<std::size_t>(available);
    const double start = seconds - available / blockRate;
    const Oscillator tone(row.frequency, start);
    switch (row.shape) {
    case Shape::Silence:
        break;
    case Shape::Tone:
        fillWithTone(block, first, tone, [] { return 1.0; });
        break;
    case Shape::Swell:
        fillWithTone(block, first, tone, [swell = Oscillator(1 / row.period, start)]() mutable {
            const double level = 0.5 - 0.5 * swell.cosine();
            swell.advance();
            return level;
        });
        break;
    case Shape::Burst:
        fillWithTone(block, first, tone, [decay = Decay(row.period, start)]() mutable {
            const double level = decay.level();
            decay.advance();
            return level;
        });
        break;
    case Shape::Noise:
        fillWithNoise(block, first, input, row.frequency, start);
        break;
    }
    for (double &sample : block)
        sample *= headroom * row.level;
    return block;
}

double inputFrequency(int input)
{
    constexpr double forSilence = 1000; // any value: silence has no frequency
    const SignalRow &row = rows[static_cast<std::size_t>(input)];
    return row.frequency > 0 ? row.frequency : forSilence;
}

} // namespace simulator
