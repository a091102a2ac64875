#pragma once

#include <array>
#include <cstdint>

/// The shapes of the EQ bands as the curve display draws them. A shape has a weight for each entry,
/// and the weight 120 stands for the band's full gain. Entry 202 lies at the pixel column of the
/// band's frequency; the next entry lies one column to its right, and so on. The shapes are
/// computed once, from the figures in eqshapes.cpp. Pure functions; any thread.
namespace eqshapes {

constexpr int entryCount = 405;
constexpr int centreEntry = 202; ///< lies at the column of the band's frequency
constexpr int qSteps = 7;

using Shape = std::array<std::int32_t, entryCount>;

/// Returns the bell of a Q step, 0 ("0.25") to 6 ("16.00"). A higher step gives a narrower bell.
const Shape &peaking(int qStep);
/// Returns the high band's shape: weight 0 at the left, full weight at the right.
const Shape &highShelf();
/// Returns the low band's shape: full weight at the left, 0 at the right. With the low cut the
/// shape is higher at the left and falls off sooner.
const Shape &lowShelf(bool lowCut);

/// Returns a shape's weight between its entries, by a smooth curve through all entries.
/// Outside the entries it returns the weight of the nearest end.
double weight(const Shape &shape, double entry);

/// Returns the column (of 136) of a frequency step of the low band (0 to 31) or a middle band (0 to
/// 63).
int column(int step);
/// Returns the column (of 136) of a frequency step of the high band, 0 to 31. A higher step counts
/// as 31.
int highColumn(int step);

} // namespace eqshapes
