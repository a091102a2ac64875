#pragma once

#include "mixer/parameters.h"
#include "mixer/strip.h"

#include <QPointF>

#include <cstdint>

/// The arithmetic of dragging faders, pan knobs and the knobs of the editing area, in whole pixels.
/// Pure functions; any thread.
// contract: positions and coordinates are unsigned 16-bit numbers that wrap around.
namespace mixer {

/// Rounds a pointer coordinate to whole pixels, halves away from zero.
std::uint16_t roundedCoordinate(double coordinate);

/// The pointer's place at one event of a drag, in whole pixels.
struct Pointer
{
    std::uint16_t x = 0;
    std::uint16_t y = 0;

    Pointer() = default;
    explicit Pointer(const QPointF &point);
};

/// Returns the fader position after the pointer moved from `last` to `now`, limited to faderTop and
/// faderBottom. A position below zero wraps around and ends at faderBottom.
int draggedFader(int position, const Pointer &last, const Pointer &now);

/// Returns the pan position after the pointer moved from `last` to `now`. Right and down turn
/// towards R; both distances add up. A step that would take the position below zero is ignored.
int draggedPan(StripKind kind, int position, const Pointer &last, const Pointer &now);

/// Returns the position of a knob of the editing area after the pointer moved from `last` to `now`,
/// limited to the knob's range. Up raises it. The result is also correct above the screen's top,
/// where row numbers wrap around.
int draggedKnob(const Parameter &parameter, int position, const Pointer &last, const Pointer &now);

} // namespace mixer
