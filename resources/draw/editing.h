#pragma once

#include "common/geometry.h"

#include <QSize>

class QPainter;

/// The panel above the strips.
namespace editing {

constexpr QSize size(geometry::editingWidth, geometry::editingHeight);

/// Surface and dividers, and what lies behind the displays: wells, grid lines and legends. The
/// lines stand where the displays' own arithmetic puts their values.
void background(QPainter &painter);

} // namespace editing
