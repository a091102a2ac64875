#pragma once

#include "mixer/parameters.h"
#include "mixer/strip.h"

#include <QPointF>

#include <cstdint>

/// The arithmetic of dragging faders, pan knobs and section knobs, in whole pixels. Positions and
/// coordinates are 16 bits wide without sign and wrap as such. Pure; any thread.
namespace mixer {

/// A pointer coordinate in whole pixels: halves are rounded away from zero.
std::uint16_t roundedCoordinate(double coordinate);

/// Where the pointer was at an event of a drag.
struct Pointer
{
    std::uint16_t x = 0;
    std::uint16_t y = 0;

    Pointer() = default;
    explicit Pointer(const QPointF &point);
};

/// The position after the pointer went from last to now: within the travel. A step that carries
/// the position below zero wraps, and so ends at the bottom.
int draggedFader(int position, const Pointer &last, const Pointer &now);

/// The same for a pan knob: right and down turn towards R. A step towards L that is larger than the
/// position is not taken.
int draggedPan(StripKind kind, int position, const Pointer &last, const Pointer &now);

/// The same for a knob of the editing area: up is more. Rows may lie above the screen's top, where
/// they wrap.
int draggedKnob(const Parameter &parameter, int position, const Pointer &last, const Pointer &now);

} // namespace mixer
