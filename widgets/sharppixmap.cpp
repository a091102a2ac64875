#include "widgets/sharppixmap.h"

#include <QFile>
#include <QImage>
#include <QPixmapCache>

namespace {

QImage loaded(const QString &path, qreal ratio)
{
    QString doubled = path;
    doubled.insert(path.lastIndexOf(QLatin1Char('.')), QLatin1String("@2x"));
    if (ratio <= 1 || !QFile::exists(doubled)) return QImage(path);
    QImage image(doubled);
    image.setDevicePixelRatio(2);
    return image;
}

} // namespace

QPixmap sharpPixmap(const QString &path, qreal ratio)
{
    const QString key = QStringLiteral("%1@%2").arg(path).arg(ratio);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) return pixmap;
    const QImage image = loaded(path, ratio);
    if (image.isNull()) return pixmap;
    const QSize size = (QSizeF(image.size()) / image.devicePixelRatio() * ratio).toSize();
    QImage scaled = size == image.size()
                        ? image
                        : image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    scaled.setDevicePixelRatio(ratio);
    pixmap = QPixmap::fromImage(scaled);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}
