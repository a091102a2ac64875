#pragma once

#include <QPixmap>

/// The backgrounds of the strips: surface, grooves, scales and meter wells. All are
/// geometry::stripHeight high. GUI thread only.
namespace stripsurface {

enum class Look {
    Left,  ///< the mono strip in the left half of a pair's block
    Right, ///< the mono strip in the right half
    Pair,  ///< the strip of a linked pair
    Master,
};

QSize sizeOf(Look look); ///< in pixels at 100 %

/// Returns the background of a strip.
/// @param selected whether the editing area shows the strip
/// @param ratio    device pixels of the screen for one pixel
QPixmap image(Look look, bool selected, qreal ratio);

} // namespace stripsurface
