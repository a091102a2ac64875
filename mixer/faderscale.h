#pragma once

#include "common/geometry.h"

#include <QString>

/// The scale of the faders: position, text and value. Pure functions; any thread.
/// A position is the row of the cap's top edge, growing downwards.
namespace mixer {

constexpr int faderTop = geometry::faderTop;       ///< +6 dB
constexpr int faderBottom = geometry::faderBottom; ///< no signal
constexpr int faderDefault = 157;                  ///< 0 dB

/// Whole decibels without unit or plus sign, "6" to "-96"; "infinity " (with its blank) at the
/// bottom and for every position outside the travel.
QString faderText(int position);

/// What the strip's label shows for a text: "-12 dB", "infinity ".
QString faderLabel(const QString &text);

/// What the device is sent for a text: whole decibels, -127 for "infinity ". A text that is no
/// number is silent too.
signed char faderValue(const QString &text);

/// A stored position as the panel takes it: one outside the travel is the bottom.
int validFaderPosition(int stored);

} // namespace mixer
