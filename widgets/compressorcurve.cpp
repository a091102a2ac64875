#include "widgets/compressorcurve.h"

#include <cstddef>

namespace {

/// Slope of the curve above the threshold, by ratio step. The last step is "inf:1".
constexpr double slopes[] = {
    1 / 1.0, 1 / 1.1, 1 / 1.3, 1 / 1.5, 1 / 1.7, 1 / 2.0,  1 / 2.5, 1 / 3.0,
    1 / 3.5, 1 / 4.0, 1 / 5.0, 1 / 6.0, 1 / 8.0, 1 / 16.0, 0,
};
static_assert(sizeof(slopes) / sizeof(slopes[0]) == 15, "one for each ratio step");

} // namespace

double CompressorCurve::output(double input) const
{
    const double over = input - kneeLevel();
    if (over <= 0) return input;
    return kneeLevel() + over * slopes[static_cast<std::size_t>(ratio)];
}
