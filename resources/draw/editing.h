#pragma once

#include <QSize>

class QPainter;

/// The panel above the strips.
namespace editing {

constexpr QSize size(1036, 165);

/// Surface and dividers, and what lies behind the displays: wells, grid lines and legends. The
/// lines stand where the displays' own arithmetic puts their values.
void background(QPainter &painter);

} // namespace editing
