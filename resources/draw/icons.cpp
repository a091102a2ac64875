#include "icons.h"

#include "controls.h"
#include "sheet.h"

#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QVector>

namespace icons {

namespace {

constexpr int sizes[] = {16, 24, 32, 48, 64, 128, 256};
constexpr int drawnSize = 64; ///< what controls::icon fills
constexpr int largest = 256;  ///< stands as 0 in the directory of an icon file
constexpr int largestBitmap = 64;
constexpr QSize installerSize(164, 314);

QImage picture(int size)
{
    return sheet::drawn({drawnSize, drawnSize}, qreal(size) / drawnSize, controls::icon)
        .convertToFormat(QImage::Format_ARGB32);
}

/// As icon files have held pictures from the first: a bitmap of twice the height, which ends with
/// a mask of one bit a pixel. The mask stays empty, since the colours tell what is transparent.
QByteArray bitmap(const QImage &image)
{
    constexpr quint32 headerSize = 40;
    constexpr quint16 planes = 1;
    constexpr quint16 bits = 32;
    const int maskRow = (image.width() + 31) / 32 * 4;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << headerSize << qint32(image.width()) << qint32(2 * image.height()) << planes << bits;
    for (int unused = 0; unused < 6; ++unused)
        stream << quint32(0);
    for (int y = image.height() - 1; y >= 0; --y)
        for (int x = 0; x < image.width(); ++x)
            stream << quint32(image.pixel(x, y));
    bytes.append(QByteArray(maskRow * image.height(), '\0'));
    return bytes;
}

QByteArray png(const QImage &image)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

/// All pictures in one file: the large ones as PNG, which keeps it small, the others as everything
/// that reads icons understands them.
QByteArray iconFile()
{
    constexpr quint16 typeIcon = 1;
    constexpr quint16 planes = 1;
    constexpr quint16 bits = 32;
    constexpr int directorySize = 6;
    constexpr int entrySize = 16;
    QVector<QByteArray> pictures;
    for (const int size : sizes)
        pictures.append(size > largestBitmap ? png(picture(size)) : bitmap(picture(size)));

    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << quint16(0) << typeIcon << quint16(pictures.size());
    int offset = directorySize + entrySize * pictures.size();
    for (int i = 0; i < pictures.size(); ++i) {
        const auto side = static_cast<quint8>(sizes[i] % largest);
        stream << side << side << quint16(0) << planes << bits;
        stream << quint32(pictures[i].size()) << quint32(offset);
        offset += pictures[i].size();
    }
    return bytes + pictures.toList().join();
}

/// What stands beside the first and the last words of the installer.
void installerSide(QPainter &painter)
{
    sheet::fill(painter, QRectF(QPointF(), installerSize), sheet::colour::gap);
    const QRectF line(installerSize.width() - 2, 0, 2, installerSize.height());
    sheet::fill(painter, line, sheet::colour::accent);
    painter.translate((installerSize.width() - 2 - drawnSize) / 2.0, drawnSize);
    controls::icon(painter);
}

bool writeInstallerSide(const QString &fileName)
{
    return sheet::drawn(installerSize, 1, installerSide)
        .convertToFormat(QImage::Format_RGB32)
        .convertToFormat(QImage::Format_Indexed8, Qt::AvoidDither)
        .save(fileName, "BMP");
}

} // namespace

bool write(const QString &folder)
{
    const QString stem = folder + QStringLiteral("/tamber");
    for (const int size : sizes)
        if (!picture(size).save(QStringLiteral("%1-%2.png").arg(stem).arg(size))) return false;
    QFile file(stem + QStringLiteral(".ico"));
    const QByteArray bytes = iconFile();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() &&
           writeInstallerSide(folder + QStringLiteral("/installer.bmp"));
}

} // namespace icons
