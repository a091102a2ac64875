#include "widgets/eqcurve.h"

#include "widgets/eqshapes.h"

#include <algorithm>

namespace {

constexpr int maxHeight = 39;

/// Returns the tenths of a pixel that a band adds at a column: its gain times the shape's weight.
int contribution(int gain, const eqshapes::Shape &shape, int bandColumn, int column)
{
    const int entry = eqshapes::centreEntry - bandColumn + column;
    return gain * shape[static_cast<std::size_t>(entry)] * maxHeight / 180;
}

/// Returns a sum of tenths in pixels.
// contract: positive sums are rounded half up, negative sums are truncated towards zero.
int rounded(int tenths)
{
    return tenths / 10 + (tenths % 10 > 4 ? 1 : 0);
}

} // namespace

int EqCurve::response(int column) const
{
    const auto &[low, high, highMid, lowMid] = bands;
    int sum =
        contribution(low.gain, eqshapes::lowShelf(lowCut), eqshapes::column(low.freq), column);
    sum += contribution(high.gain, eqshapes::highShelf(), eqshapes::highColumn(high.freq), column);
    for (const Band &mid : {highMid, lowMid})
        sum += contribution(mid.gain, eqshapes::peaking(mid.q), eqshapes::column(mid.freq), column);
    return std::clamp(rounded(sum), -maxHeight, maxHeight);
}
