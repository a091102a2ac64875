#include "simulator/levels.h"

#include "simulator/inputsignals.h"

#include <algorithm>
#include <cmath>

namespace simulator {
namespace {

constexpr int sampleRate = 8000; // enough for a peak
constexpr int blockSize = 256;

constexpr double quarterTurn = 1.5707963267948966;

double gain(int fader)
{
    return fader == silentFader ? 0 : std::pow(10, fader / 20.0);
}

struct Send
{
    double left = 0;
    double right = 0;
};

/// What of an input reaches the two sides of the master; constant power over the pan.
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

} // namespace

Levels levelsAt(const MixerState &state, double seconds)
{
    const bool anySolo = std::any_of(
        state.inputs.begin(), state.inputs.end(), [](const Input &input) { return input.solo; });
    Levels levels{};
    std::array<double, blockSize> left{};
    std::array<double, blockSize> right{};
    for (std::size_t i = 0; i < state.inputs.size(); ++i) {
        const Send send = sendOf(state.inputs[i], anySolo);
        double peak = 0;
        for (std::size_t n = 0; n < blockSize; ++n) {
            const double back = static_cast<double>(blockSize - n) / sampleRate;
            const double sample = inputSample(static_cast<int>(i), std::max(0.0, seconds - back));
            peak = std::max(peak, std::abs(sample));
            left[n] += send.left * sample;
            right[n] += send.right * sample;
        }
        levels.inputs[i] = linear(peak);
    }
    const auto peakOf = [](const std::array<double, blockSize> &block) {
        const auto [low, high] = std::minmax_element(block.begin(), block.end());
        return std::max(-*low, *high);
    };
    levels.master[0] = linear(peakOf(left) * masterGain(state.master[0], state.trueBypass));
    levels.master[1] = linear(peakOf(right) * masterGain(state.master[1], state.trueBypass));
    return levels;
}

} // namespace simulator
