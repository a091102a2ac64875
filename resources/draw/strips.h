#pragma once

class QPainter;

/// Background images of the strips: surface, grooves, scales and meter wells. All are
/// geometry::stripHeight high.
namespace strips {

void mono(QPainter &painter, bool selected); ///< 59 wide
void pair(QPainter &painter, bool selected); ///< 118 wide
void master(QPainter &painter);              ///< 78 wide

} // namespace strips
