#include "mixer/drag.h"

#include "mixer/faderscale.h"

#include <algorithm>

namespace mixer {
namespace {

/// Returns the signed distance between two coordinates, which may have wrapped around.
int difference(std::uint16_t from, std::uint16_t to)
{
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(to - from));
}

int limitedPan(StripKind kind, int position)
{
    constexpr int oddLast = 40;
    constexpr int evenFirst = 59;
    constexpr int evenLast = 99;
    if (kind == StripKind::Odd) return std::min(position, oddLast);
    return kind == StripKind::Even ? std::clamp(position, evenFirst, evenLast) : position;
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

int draggedFader(int position, const Pointer &last, const Pointer &now)
{
    const auto moved = static_cast<std::uint16_t>(position + now.y - last.y);
    return std::clamp<int>(moved, faderTop, faderBottom);
}

int draggedPan(StripKind kind, int position, const Pointer &last, const Pointer &now)
{
    const int step = difference(last.x, now.x) + difference(last.y, now.y);
    const bool taken = position + step >= 0;
    return limitedPan(kind, static_cast<std::uint16_t>(taken ? position + step : position));
}

int draggedKnob(const Parameter &parameter, int position, const Pointer &last, const Pointer &now)
{
    return std::clamp(position + difference(now.y, last.y), 0, topPosition(parameter));
}

} // namespace mixer
