#pragma once

#include "common/geometry.h"

#include <QString>

#include <cstdint>

/// The scale of the faders: position, text and device value. Pure functions; any thread.
/// A position is the row of the cap's top edge and grows downwards.
// contract: the scale, its texts and its values. Devices and settings files rely on them.
namespace mixer {

constexpr int faderTop = geometry::faderTop;       ///< +6 dB
constexpr int faderBottom = geometry::faderBottom; ///< no signal
constexpr int faderDefault = 157;                  ///< 0 dB

/// Returns whole decibels without unit or plus sign, "6" to "-96". Returns "infinity ", with a
/// trailing blank, for faderBottom and for every position outside the travel.
QString faderText(int position);

/// Returns what the strip's label shows for a fader text: "-12 dB", "infinity ".
QString faderLabel(const QString &text);

/// Returns the value that the device is sent for a fader text, in whole decibels. Returns -127
/// (silence) for "infinity " and for any text that is not a number.
std::int8_t faderValue(const QString &text);

/// Returns a stored position, or faderBottom if the stored one lies outside the travel.
int validFaderPosition(int stored);

} // namespace mixer
