#include "sheet.h"

#include <QImage>
#include <QPainter>

namespace sheet {

void fill(QPainter &painter, const QRectF &area, QRgb rgb)
{
    const bool smooth = painter.testRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(area, QColor::fromRgba(rgb));
    painter.setRenderHint(QPainter::Antialiasing, smooth);
}

static bool
writeScaled(const QString &path, QSize size, int scale, const std::function<void(QPainter &)> &draw)
{
    QImage image(size * scale, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    draw(painter);
    painter.end();
    return image.save(path);
}

bool write(
    const QString &folder, const QString &name, QSize size,
    const std::function<void(QPainter &)> &draw)
{
    const QString stem = folder + QLatin1Char('/') + name;
    return writeScaled(stem + QLatin1String(".png"), size, 1, draw) &&
           writeScaled(stem + QLatin1String("@2x.png"), size, 2, draw);
}

} // namespace sheet
