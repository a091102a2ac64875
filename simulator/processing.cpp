#include "simulator/processing.h"

#include <algorithm>
#include <cmath>

namespace simulator {
namespace {

enum Band { low = 0, high = 1, highMid = 2, lowMid = 3 };

// clang-format off
/// Frequency of each step, in hertz. Step 0 of the high band is entry `highOffset`.
constexpr std::array<int, 64> frequencies = {
      32,    40,    50,    60,    70,    80,    90,   100,   125,   150,   175,   200,   225,
     250,   300,   350,   400,   450,   500,   600,   700,   800,   850,   900,   950,  1000,
    1100,  1200,  1300,  1400,  1500,  1600,  1700,  1800,  1900,  2000,  2200,  2400,  2600,
    2800,  3000,  3200,  3400,  3600,  3800,  4000,  4500,  5000,  5500,  6000,  6500,  7000,
    7500,  8000,  9000, 10000, 11000, 12000, 13000, 14000, 15000, 16000, 17000, 18000,
};
constexpr int highOffset = 32;
constexpr std::array<double, 7> qualities = {0.25, 0.5, 1, 2, 4, 8, 16};
/// Ratio of each step. The last one is a limiter.
constexpr std::array<double, 15> ratios = {
    1.0, 1.1, 1.3, 1.5, 1.7, 2.0, 2.5, 3.0, 3.5, 4.0, 5.0, 6.0, 8.0, 16.0, 1e9,
};
// clang-format on

template <typename Table>
constexpr auto entry(const Table &table, int step)
{
    return table[static_cast<std::size_t>(std::clamp(step, 0, static_cast<int>(table.size()) - 1))];
}

/// Returns the fraction of a high shelf's gain at this distance above its corner. A low shelf is
/// its mirror image.
double shelfShare(double octavesAbove)
{
    return 1 / (1 + std::exp2(-2 * octavesAbove));
}

/// Returns the fraction of a bell's gain at this distance from its centre.
double bellShare(double octavesOff, double q)
{
    const double x = octavesOff * q;
    return std::exp2(-x * x);
}

/// Returns the gain of a second-order high pass in dB: 12 dB per octave below its corner.
double lowCutGain(double octavesAbove)
{
    return -10 * std::log10(1 + std::exp2(-4 * octavesAbove));
}

} // namespace

double bandFrequency(int band, int step)
{
    return entry(frequencies, band == high ? step + highOffset : step);
}

double bandQuality(int step)
{
    return entry(qualities, step);
}

double compressionRatio(int step)
{
    return entry(ratios, step);
}

double eqGain(const Eq &eq, double frequency)
{
    if (!eq.on) return 0;
    const auto octaves = [frequency](double from) { return std::log2(frequency / from); };
    const auto hertz = [&eq](int band) { return bandFrequency(band, eq.bands[band].freq); };
    const double corner = octaves(hertz(low));
    double gain = eq.bands[low].gain * shelfShare(-corner);
    if (eq.lowCut) gain += lowCutGain(corner);
    gain += eq.bands[high].gain * shelfShare(octaves(hertz(high)));
    for (const int mid : {highMid, lowMid}) {
        const EqBand &band = eq.bands[mid];
        gain += band.gain * bellShare(octaves(hertz(mid)), bandQuality(band.q));
    }
    return gain;
}

double reduction(const Compressor &compressor, double level)
{
    constexpr int topStep = 32; // 0 dB
    if (!compressor.on) return 0;
    const double over = level - (compressor.threshold - topStep);
    return over > 0 ? over * (1 - 1 / compressionRatio(compressor.ratio)) : 0;
}

double makeUpGain(const Compressor &compressor)
{
    return compressor.on ? compressor.gain : 0;
}

} // namespace simulator
