#pragma once

#include <QColor>
#include <QPointF>

class QPainter;

/// How a route from a source to an output is drawn. Routes from the master and from the computer
/// differ in shape as well as in colour, so that they can be told apart without seeing colours.
/// GUI thread only.
namespace routeline {

struct Style
{
    QColor colour;
    bool fromMaster = true; ///< solid line and filled ends; otherwise dashed line and hollow ends
    bool strong = false;    ///< a thicker line
};

constexpr int socketRadius = 4; ///< of the mark where routes leave a source
constexpr int headLength = 10;  ///< of the arrow head at the output

/// Draws the mark of a source.
void drawSocket(QPainter &painter, const QPointF &centre, const Style &style);

/// Draws a curve from a source's mark to the tip of an arrow. The curve is level at both ends.
/// @param from centre of the source's mark, which is not drawn
void drawArrow(QPainter &painter, const QPointF &from, const QPointF &tip, const Style &style);

} // namespace routeline
