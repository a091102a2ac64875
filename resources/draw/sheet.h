#pragma once

#include <QColor>
#include <QSize>
#include <QString>

#include <functional>

class QImage;
class QPainter;
class QRectF;

/// The colours and sizes that all images share, and how an image is written.
namespace sheet {

/// The same values stand in panel.qss for the stock widgets.
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

/// A filled rectangle with sharp edges, whatever the painter's hints are.
void fill(QPainter &painter, const QRectF &area, QRgb rgb);

/// What `draw`, which counts in pixels of `size`, draws at this scale.
QImage drawn(QSize size, qreal scale, const std::function<void(QPainter &)> &draw);

/// Draws with `draw`, in pixels of the 1x size, and writes "name.png" and "name@2x.png" into
/// `folder`. False when a file cannot be written.
bool write(
    const QString &folder, const QString &name, QSize size,
    const std::function<void(QPainter &)> &draw);

} // namespace sheet
