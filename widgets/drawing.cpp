#include "widgets/drawing.h"

#include <QColor>
#include <QFont>
#include <QPaintDevice>
#include <QPainter>
#include <QPixmapCache>

#include <algorithm>
#include <utility>

namespace {

constexpr int captionSize = 10;      // pixels
constexpr qreal captionSpacing = 96; // percent
constexpr qreal thin = 4;            // device pixels; a line up to this width keeps its width

/// Snaps one side of a rectangle to whole pixels.
/// @return the first pixel and the number of pixels
std::pair<int, int> snapped(qreal from, qreal length)
{
    const int first = qRound(from);
    const int count = length <= thin ? qRound(length) : qRound(from + length) - first;
    return {first, std::max(1, count)};
}

} // namespace

namespace drawing {

QImage drawn(QSize size, qreal scale, const std::function<void(QPainter &)> &draw)
{
    QImage image((QSizeF(size) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    draw(painter);
    painter.end();
    return image;
}

QPixmap drawnPixmap(QSize size, qreal ratio, const std::function<void(QPainter &)> &draw)
{
    QPixmap pixmap = QPixmap::fromImage(drawn(size, ratio, draw));
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

QPixmap
pixmap(const QString &key, QSize size, qreal ratio, const std::function<void(QPainter &)> &draw)
{
    const QString name = QStringLiteral("%1@%2").arg(key).arg(ratio);
    QPixmap pixmap;
    if (QPixmapCache::find(name, &pixmap)) return pixmap;
    pixmap = drawnPixmap(size, ratio, draw);
    QPixmapCache::insert(name, pixmap);
    return pixmap;
}

void fill(QPainter &painter, const QRectF &area, const QColor &colour)
{
    const QRectF device = painter.combinedTransform().mapRect(area);
    const auto [left, width] = snapped(device.left(), device.width());
    const auto [top, height] = snapped(device.top(), device.height());
    painter.save();
    painter.resetTransform(); // the scale of the device remains
    const qreal ratio = painter.device()->devicePixelRatioF();
    painter.scale(1 / ratio, 1 / ratio);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(QRect(left, top, width, height), colour);
    painter.restore();
}

void caption(
    QPainter &painter, const QRectF &area, int alignment, const QString &text, const QColor &colour)
{
    QFont font;
    font.setFamilies({QStringLiteral("Segoe UI"), QStringLiteral("DejaVu Sans Condensed")});
    font.setPixelSize(captionSize);
    font.setLetterSpacing(QFont::PercentageSpacing, captionSpacing);
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(area, alignment | Qt::TextDontClip, text);
}

} // namespace drawing
