#pragma once

class QPainter;

/// Images of parts that move or light up, of the marks of Qt's own widgets, and of the program.
/// Each function draws one image of the size given in pixels.
namespace controls {

void faderCap(QPainter &painter);                ///< 20 x 30
void panMarker(QPainter &painter, bool centred); ///< 16 x 12
void meterBar(QPainter &painter);                ///< 6 x 107; a full bar
void checkMark(QPainter &painter);               ///< 12 x 12
void downArrow(QPainter &painter);               ///< 10 x 6
void icon(QPainter &painter);                    ///< 64 x 64

} // namespace controls
