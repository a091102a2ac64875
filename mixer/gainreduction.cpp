#include "mixer/gainreduction.h"

#include "common/geometry.h"
#include "device/qvxdevice.h"
#include "mixer/state.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace mixer {
namespace {

// clang-format off
/// Gains from -24 dB to unity, about 1 dB apart.
constexpr std::uint16_t gains[] = {
     2067,  2319,  2602,  2920,  3276,  3676,  4125,  4628,  5193,  5827,  6538,  7335,  8230,
     9235, 10362, 11626, 13045, 14636, 16422, 18426, 20675, 23197, 26028, 29204, 32768,
};
/// Rows by which the bar is shorter than its full length if the gain is below the same entry of
/// `gains` and not below the one before.
constexpr int heights[] = {
     0,  3,  6,  8, 11, 14, 16, 19, 22, 24, 27, 30, 32,
    35, 38, 40, 43, 46, 48, 51, 54, 56, 59, 61, 62,
};
// clang-format on
static_assert(std::size(gains) == 25 && std::size(heights) == 25, "the tables go together");

/// The device reports no reduction as 32767 or 32768.
double decibelsBelowUnity(std::uint16_t gain)
{
    constexpr double unity = 32767;
    return -20 * std::log10(std::clamp(double(gain), 1.0, unity) / unity);
}

} // namespace

int reductionTarget(std::uint16_t gain)
{
    const auto *const above = std::upper_bound(std::begin(gains), std::end(gains), gain);
    if (above == std::end(gains)) return geometry::reductionLength;
    return geometry::reductionLength - heights[above - std::begin(gains)];
}

int fallenReduction(int length)
{
    if (length <= 1) return 0;
    if (length == 2) return 1;
    if (length <= 4) return length - 2;
    return length - (length <= 8 ? 4 : 8);
}

void GainReduction::poll(const std::optional<StripId> &strip, const storage::Values &values)
{
    if (!strip) {
        m_polled.reset();
        m_decibels = 0;
        return fall();
    }
    const auto input = static_cast<std::uint8_t>(strip->number);
    if (strip != m_polled) {
        // The device's last answer for this strip may be minutes old, and the bar still shows the
        // previous strip.
        m_polled = strip;
        m_length = 0;
        m_shown = false;
        m_decibels = 0;
        m_device.forget_grmeter(vxctl::channelInput, input);
    }
    unsigned int gain = 0;
    const bool answered = m_device.get_grmeter(vxctl::channelInput, input, gain);
    if (!isOn(values, *strip, storage::strip::comp)) {
        m_decibels = 0;
        fall();
    } else if (answered) {
        m_decibels = decibelsBelowUnity(static_cast<std::uint16_t>(gain));
        take(static_cast<std::uint16_t>(gain));
    }
}

void GainReduction::take(std::uint16_t gain)
{
    const int wanted = reductionTarget(gain);
    if (m_length > wanted) return fall();
    m_length = wanted;
    m_shown = true;
}

void GainReduction::fall()
{
    const int next = fallenReduction(m_length);
    if (next == 0)
        m_shown = false;
    else
        m_length = next;
}

} // namespace mixer
