#pragma once

#include <QString>

#include <cstdint>

/// The scale of the faders: position, text and value. Pure functions; any thread.
/// A position is the row of the cap's top edge, growing downwards.
namespace mixer {

constexpr std::uint16_t faderTop = 144;     ///< +6 dB
constexpr std::uint16_t faderBottom = 245;  ///< no signal
constexpr std::uint16_t faderDefault = 157; ///< 0 dB

/// Whole decibels without unit or plus sign, "6" to "-96"; "infinity " (with its blank) at the
/// bottom and for every position outside the travel.
QString faderText(std::uint16_t position);

/// What the strip's label shows for a text: "-12 dB", "infinity ".
QString faderLabel(const QString &text);

/// What the device is sent for a text: whole decibels, -127 for "infinity ". A text that is no
/// number is silent too.
signed char faderValue(const QString &text);

/// A stored position as the panel takes it: one outside the travel is the bottom.
std::uint16_t validFaderPosition(int stored);

} // namespace mixer
