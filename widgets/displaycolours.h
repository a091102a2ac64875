#pragma once

#include <QColor>

/// The colours of the curves, which are the only ones that do not come from the style sheet.
namespace displaycolours {

constexpr QColor inCircuit(41, 223, 255);
constexpr QColor switchedOff(160, 160, 160);
constexpr QColor noChannel(80, 80, 80);

} // namespace displaycolours
