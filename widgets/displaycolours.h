#pragma once

#include <QColor>

/// The colours of the curves. All other colours come from the style sheet.
namespace displaycolours {

constexpr QColor inCircuit(41, 223, 255);    ///< EQ or compressor on
constexpr QColor switchedOff(160, 160, 160); ///< EQ or compressor off
constexpr QColor noChannel(80, 80, 80);      ///< no channel shown

} // namespace displaycolours
