#pragma once

#include <QImage>
#include <QPixmap>
#include <QSize>
#include <QString>

#include <functional>

class QColor;
class QPainter;
class QRectF;

/// Drawing that stays sharp at every scale of the screen. Lengths are in pixels at 100 %. GUI
/// thread only.
namespace drawing {

/// Returns the image that `draw` draws at a scale. `draw` works in pixels of `size` at any scale.
QImage drawn(QSize size, qreal scale, const std::function<void(QPainter &)> &draw);

/// Returns the pixmap that `draw` draws for a screen.
/// @param ratio device pixels of the screen for one pixel
QPixmap drawnPixmap(QSize size, qreal ratio, const std::function<void(QPainter &)> &draw);
/// Returns the same pixmap as drawnPixmap(). It is drawn once for each key and ratio and then kept.
/// @param key names the drawing together with everything that it depends on, except the ratio
QPixmap
pixmap(const QString &key, QSize size, qreal ratio, const std::function<void(QPainter &)> &draw);

/// Fills a rectangle along the device's pixels. Thin lines of equal width have an equal number of
/// device pixels at every place, at least one.
void fill(QPainter &painter, const QRectF &area, const QColor &colour);

/// Draws a number or a caption in the smallest font, 10 pixels high.
/// @param alignment flags of Qt::Alignment
void caption(
    QPainter &painter, const QRectF &area, int alignment, const QString &text,
    const QColor &colour);

constexpr int captionHeight = 12; ///< rows that a caption needs

} // namespace drawing
