#pragma once

#include "mixer/strip.h"

#include <QString>

/// The scale of the pan knobs: position, text and value. Pure functions; any thread.
/// A position is the column of the marker's left edge: 0 to 40 in an odd strip and on the left
/// side of a pair, 59 to 99 in an even strip and on the right side.
namespace mixer {

/// "L20" to "L1", "C", "R1" to "R20"; "Error" for a position of neither range.
QString panText(int position);

/// What the device is sent for a text: -127 (left) to 127; -1 for a text that is no pan text.
signed char panValue(const QString &text);

/// The centre of a mono strip's kind; 0 for the other kinds, which have none.
int panCentre(StripKind kind);

/// The position within the kind's range that is nearest to the given one.
int nearestPanPosition(StripKind kind, int position);

/// A stored position as the panel takes it: one outside the kind's range is the centre.
int validPanPosition(StripKind kind, int stored);

} // namespace mixer
