#pragma once

#include <QColor>

/// The colours of everything that is painted in code. resources/panel.qss uses the same values for
/// Qt's own widgets.
///
/// A text has a contrast of at least 4.5 to 1 to its background, the edge of a button or a groove
/// at least 3 to 1.
namespace colours {

/// @name Surfaces
///@{
constexpr QColor page(20, 24, 27);       ///< between the blocks
constexpr QColor surface(28, 33, 38);    ///< a block: a pair of strips, the editing area
constexpr QColor surfaceLit(39, 48, 58); ///< the selected strip
constexpr QColor raised(43, 51, 59);     ///< buttons and tool tips
constexpr QColor well(11, 13, 15);       ///< grooves, meters and displays
constexpr QColor line(45, 52, 59);       ///< separators
constexpr QColor grid(46, 54, 61);       ///< lines in a well
constexpr QColor edge(113, 125, 136);    ///< edges of buttons, grooves and fields
///@}

/// @name Texts and marks
///@{
constexpr QColor text(217, 223, 228);
constexpr QColor quiet(154, 165, 175); ///< captions and scales
constexpr QColor disabledText(148, 158, 168);
constexpr QColor selection(28, 143, 166); ///< behind selected text
constexpr QColor tick(113, 125, 136);
constexpr QColor accent(41, 223, 255);
constexpr QColor green(47, 201, 139);
constexpr QColor amber(242, 193, 78);
constexpr QColor red(255, 77, 79);
///@}

/// @name Caps and knobs
///@{
constexpr QColor capTop(90, 100, 110);
constexpr QColor capBottom(52, 59, 67);
constexpr QColor capEdge(10, 12, 14);
///@}

/// @name Curves
///@{
constexpr QColor inCircuit(41, 223, 255);    ///< EQ or compressor on
constexpr QColor switchedOff(160, 160, 160); ///< EQ or compressor off
constexpr QColor noChannel(80, 80, 80);      ///< no channel shown
///@}

/// The EQ bands, in the order of the curve: low, high, high-mid, low-mid.
constexpr QColor bands[] = {
    QColor(255, 171, 61), QColor(183, 156, 255), QColor(143, 209, 79), QColor(255, 123, 176)};

} // namespace colours
