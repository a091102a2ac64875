#pragma once

#include <QColor>
#include <QSize>
#include <QString>

#include <functional>

class QImage;
class QPainter;
class QRectF;

/// The colours of all images, and the functions that draw and write an image.
namespace sheet {

/// panel.qss uses the same values for Qt's own widgets.
namespace colour {
constexpr QRgb gap = 0xff0f1214;        ///< between strips
constexpr QRgb surface = 0xff1c2126;    ///< a strip
constexpr QRgb surfaceLit = 0xff27303a; ///< the selected strip
constexpr QRgb head = 0xff222930;       ///< band behind the select button
constexpr QRgb headLit = 0xff2f3b47;
constexpr QRgb line = 0xff2d343b; ///< separators
constexpr QRgb well = 0xff0b0d0f; ///< grooves and unlit meters
constexpr QRgb grid = 0xff21272c; ///< lines in a well
constexpr QRgb tick = 0xff5d6872;
constexpr QRgb number = 0xff8d98a3;
constexpr QRgb text = 0xffd9dfe4;
constexpr QRgb accent = 0xff29dfff;
constexpr QRgb capTop = 0xff5a646e;
constexpr QRgb capBottom = 0xff343b43;
constexpr QRgb capEdge = 0xff0a0c0e;
constexpr QRgb green = 0xff2fc98b;
constexpr QRgb amber = 0xfff2c14e;
constexpr QRgb red = 0xffff4d4f;
} // namespace colour

/// Fills a rectangle with sharp edges, even if the painter uses antialiasing.
void fill(QPainter &painter, const QRectF &area, QRgb rgb);

/// Returns the image that `draw` draws at a scale. `draw` works in pixels of `size` at any scale.
QImage drawn(QSize size, qreal scale, const std::function<void(QPainter &)> &draw);

/// Draws an image at the scales 1 and 2 and writes it to "name.png" and "name@2x.png" in `folder`.
/// `draw` works in pixels of `size` at both scales. Returns false if a file cannot be written.
bool write(
    const QString &folder, const QString &name, QSize size,
    const std::function<void(QPainter &)> &draw);

} // namespace sheet
