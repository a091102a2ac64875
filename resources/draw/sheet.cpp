#include "sheet.h"

#include "widgets/drawing.h"

#include <QHash>
#include <QImage>
#include <QPainter>
#include <QVector>

#include <cstdint>

namespace sheet {

/// Converts an image to one with a palette, unless it has too many colours. An image with a palette
/// loads in a fraction of the time, and all images are loaded while the window opens.
static QImage withPalette(const QImage &image)
{
    constexpr int maxColours = 256;
    const QImage plain = image.convertToFormat(QImage::Format_ARGB32);
    QImage indexed(plain.size(), QImage::Format_Indexed8);
    QHash<QRgb, int> places;
    QVector<QRgb> colours;
    for (int y = 0; y < plain.height(); ++y) {
        const auto *row = reinterpret_cast<const QRgb *>(plain.constScanLine(y));
        for (int x = 0; x < plain.width(); ++x) {
            if (!places.contains(row[x])) {
                places.insert(row[x], colours.size());
                colours.append(row[x]);
            }
            if (colours.size() > maxColours) return image;
            indexed.scanLine(y)[x] = static_cast<std::uint8_t>(places.value(row[x]));
        }
    }
    indexed.setColorTable(colours);
    return indexed;
}

bool write(
    const QString &folder, const QString &name, QSize size,
    const std::function<void(QPainter &)> &draw)
{
    const QString stem = folder + QLatin1Char('/') + name;
    return withPalette(drawing::drawn(size, 1, draw)).save(stem + QLatin1String(".png")) &&
           withPalette(drawing::drawn(size, 2, draw)).save(stem + QLatin1String("@2x.png"));
}

} // namespace sheet
