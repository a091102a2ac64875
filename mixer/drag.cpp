#include "mixer/drag.h"

#include "mixer/faderscale.h"

namespace mixer {
namespace {

/// The way from one coordinate to another, with its sign.
int difference(std::uint16_t from, std::uint16_t to)
{
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(to - from));
}

std::uint16_t limitedPan(StripKind kind, std::uint16_t position)
{
    constexpr std::uint16_t oddLast = 40;
    constexpr std::uint16_t evenFirst = 59;
    constexpr std::uint16_t evenLast = 99;
    switch (kind) {
    case StripKind::Odd:
        return position > oddLast ? oddLast : position;
    case StripKind::Even:
        if (position > evenLast) return evenLast;
        return position < evenFirst ? evenFirst : position;
    case StripKind::Pair:
    case StripKind::Master:
        break;
    }
    return position;
}

} // namespace

std::uint16_t roundedCoordinate(double coordinate)
{
    const double half = coordinate < 0 ? -0.5 : 0.5;
    return static_cast<std::uint16_t>(static_cast<int>(coordinate + half));
}

Pointer::Pointer(const QPointF &point)
    : x(roundedCoordinate(point.x())), y(roundedCoordinate(point.y()))
{
}

std::uint16_t draggedFader(std::uint16_t position, const Pointer &last, const Pointer &now)
{
    const auto moved = static_cast<std::uint16_t>(position + now.y - last.y);
    if (moved < faderTop) return faderTop;
    return moved > faderBottom ? faderBottom : moved;
}

std::uint16_t
draggedPan(StripKind kind, std::uint16_t position, const Pointer &last, const Pointer &now)
{
    const int step = difference(last.x, now.x) + difference(last.y, now.y);
    const bool taken = position + step >= 0;
    return limitedPan(kind, static_cast<std::uint16_t>(taken ? position + step : position));
}

} // namespace mixer
