#pragma once

#include "mixer/strip.h"

#include <QPointF>
#include <QString>

#include <cstdint>

/// The arithmetic of dragging faders and pan knobs, in whole pixels. Positions and coordinates are
/// 16 bits wide without sign and wrap as such. Pure; any thread.
namespace mixer {

/// A pointer coordinate in whole pixels: halves are rounded away from zero.
std::uint16_t roundedCoordinate(double coordinate);

/// Where the pointer was at the last event of a drag.
struct Pointer
{
    std::uint16_t x = 0;
    std::uint16_t y = 0;

    Pointer() = default;
    explicit Pointer(const QPointF &point);
};

/// A drag under way: from a press to the next press.
struct Drag
{
    Pointer last;
    std::uint16_t position = 0;
    QString key; ///< of the strip whose control was pressed

    /// The strip's control was set by other means, as by the wheel: the drag goes on from there.
    void follow(const QString &stripKey, std::uint16_t newPosition)
    {
        if (stripKey == key) position = newPosition;
    }
};

/// The position after the pointer went from last to now: within the travel. A step that carries
/// the position below zero wraps, and so ends at the bottom.
std::uint16_t draggedFader(std::uint16_t position, const Pointer &last, const Pointer &now);

/// The same for a pan knob: right and down turn towards R. A step towards L that is larger than the
/// position is not taken.
std::uint16_t
draggedPan(StripKind kind, std::uint16_t position, const Pointer &last, const Pointer &now);

} // namespace mixer
