#include "simulator/levels.h"

#include "simulator/inputsignals.h"
#include "simulator/processing.h"

#include <algorithm>
#include <cmath>

namespace simulator {
namespace {

constexpr double quarterTurn = 1.5707963267948966;

double factor(double decibels)
{
    return std::pow(10, decibels / 20);
}

double decibels(double factor)
{
    constexpr double silence = 1e-6;
    return 20 * std::log10(std::max(factor, silence));
}

double gain(int fader)
{
    return fader == silentFader ? 0 : factor(fader);
}

double peakOf(const Block &block)
{
    const auto [low, high] = std::minmax_element(block.begin(), block.end());
    return std::max(-*low, *high);
}

void add(Block &sum, const Block &block, double gain)
{
    for (std::size_t n = 0; n < blockSize; ++n)
        sum[n] += gain * block[n];
}

struct Send
{
    double left = 0;
    double right = 0;
};

/// Returns the gains from an input to the two sides of the master. Panning keeps the power
/// constant.
Send sendOf(const Input &input, bool anySolo)
{
    const bool audible = !input.mute && (input.solo || !anySolo);
    if (!audible) return {};
    const double angle = (std::clamp(input.pan, -127, 127) / 127.0 + 1) / 2 * quarterTurn;
    const double level = (input.phase ? -1 : 1) * gain(input.fader);
    return {level * std::cos(angle), level * std::sin(angle)};
}

std::uint16_t linear(double peak)
{
    return static_cast<std::uint16_t>(std::min(peak, 1.0) * fullScale);
}

double masterGain(const MasterSide &side, bool bypassed)
{
    return side.mute || bypassed ? 0 : gain(side.fader);
}

std::uint16_t reductionLevel(double reduced)
{
    constexpr double unity = 32767;
    return static_cast<std::uint16_t>(unity * factor(-reduced));
}

struct Channels
{
    std::array<Block, inputCount> blocks;     ///< input signals
    std::array<double, inputCount> equalized; ///< linear gain of the EQ
    std::array<double, inputCount> level;     ///< peak after the EQ, dB
};

Channels channelsAt(const MixerState &state, double seconds)
{
    Channels channels;
    for (std::size_t i = 0; i < inputCount; ++i) {
        const double frequency = inputFrequency(static_cast<int>(i));
        channels.blocks[i] = inputBlock(static_cast<int>(i), seconds);
        channels.equalized[i] = factor(eqGain(state.inputs[i].eq, frequency));
        channels.level[i] = decibels(peakOf(channels.blocks[i]) * channels.equalized[i]);
    }
    return channels;
}

/// Returns the level that an input's compressor follows, in dB: its own, or that of the louder side
/// of a linked pair.
double detectorLevel(const MixerState &state, const Channels &channels, std::size_t input)
{
    const std::size_t partner = input ^ 1;
    const double own = channels.level[input];
    return state.inputs[input].comp.link ? std::max(own, channels.level[partner]) : own;
}

} // namespace

Levels levelsAt(const MixerState &state, double seconds)
{
    const bool anySolo = std::any_of(
        state.inputs.begin(), state.inputs.end(), [](const Input &input) { return input.solo; });
    const Channels channels = channelsAt(state, seconds);
    Levels levels{};
    Block left{};
    Block right{};
    for (std::size_t i = 0; i < inputCount; ++i) {
        const Compressor &comp = state.inputs[i].comp;
        const double reduced = reduction(comp, detectorLevel(state, channels, i));
        const double processed = channels.equalized[i] * factor(makeUpGain(comp) - reduced);
        const Send send = sendOf(state.inputs[i], anySolo);
        add(left, channels.blocks[i], processed * send.left);
        add(right, channels.blocks[i], processed * send.right);
        levels.inputs[i] = linear(peakOf(channels.blocks[i]) * processed);
        levels.gainReduction[i] = reductionLevel(reduced);
    }
    levels.master[0] = linear(peakOf(left) * masterGain(state.master[0], state.trueBypass));
    levels.master[1] = linear(peakOf(right) * masterGain(state.master[1], state.trueBypass));
    return levels;
}

} // namespace simulator
