#pragma once

#include <array>
#include <cstdint>

/// The shapes of the EQ bands as the curve display draws them: a weight for each entry, 120 for
/// the full gain of the band. Entry 202 is the pixel column of the band's frequency; the others
/// lie as many columns to its sides. The shapes are computed once, from the figures in the source.
/// Pure; any thread.
namespace eqshapes {

constexpr int entryCount = 405;
constexpr int centreEntry = 202; ///< stands at the column of the band's frequency
constexpr int qSteps = 7;

using Shape = std::array<std::int32_t, entryCount>;

/// A bell that is narrower with every Q step, 0 ("0.25") to 6 ("16.00").
const Shape &peaking(int qStep);
/// Nothing on the left, everything on the right.
const Shape &highShelf();
/// Everything on the left; with the low cut it is higher and falls off sooner.
const Shape &lowShelf(bool lowCut);

/// The column (of 136) of a frequency step: 0 to 63 of the low and the middle bands, 0 to 31 of
/// the high band.
int column(int step);
int highColumn(int step);

} // namespace eqshapes
