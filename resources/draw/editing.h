#pragma once

#include "common/geometry.h"

#include <QSize>

class QPainter;

/// The image of the editing area above the strips.
namespace editing {

constexpr QSize size(geometry::editingWidth, geometry::editingHeight);

/// Draws the surface, the dividers and what is behind the displays: wells, grid lines and legends.
/// The grid lines are placed by the arithmetic of the displays.
void background(QPainter &painter);

} // namespace editing
