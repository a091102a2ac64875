#pragma once

#include "mixer/strip.h"

#include <QString>

#include <cstdint>

/// The scale of the pan knobs: position, text and device value. Pure functions; any thread.
/// A position is the column of the marker's left edge: 0 to 40 in an odd strip and on the left
/// side of a pair, 59 to 99 in an even strip and on the right side.
// contract: the scale, its texts and its values, "Error" and -1 included.
namespace mixer {

/// Returns "L20" to "L1", "C", or "R1" to "R20". Returns "Error" for a position in neither range.
QString panText(int position);

/// Returns the value that the device is sent for a pan text: -127 (left) to 127 (right). Returns -1
/// for any other text.
std::int8_t panValue(const QString &text);

/// Returns the centre position of an odd or even strip, or 0 for pairs and the master, which have
/// no pan position of their own.
int panCentre(StripKind kind);

/// Returns a position clamped to the range of a kind. For the kinds Odd and Even only.
int nearestPanPosition(StripKind kind, int position);

/// Returns a stored position, or the centre if the stored one lies outside the kind's range. For
/// the kinds Odd and Even only.
int validPanPosition(StripKind kind, int stored);

} // namespace mixer
