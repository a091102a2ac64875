#include "icons.h"

#include "controls.h"
#include "widgets/colours.h"
#include "widgets/drawing.h"

#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QVector>

#include <cstdint>

namespace icons {

namespace {

constexpr int sizes[] = {16, 24, 32, 48, 64, 128, 256};
constexpr int drawnSize = 64; ///< the size that controls::icon draws
constexpr int largest = 256;  ///< written as 0 in the directory of an icon file
constexpr int largestBitmap = 64;
constexpr QSize installerSize(164, 314);

QImage picture(int size)
{
    return drawing::drawn({drawnSize, drawnSize}, qreal(size) / drawnSize, controls::icon)
        .convertToFormat(QImage::Format_ARGB32);
}

/// Returns a picture in the original format of icon files: a bitmap of twice the height with a mask
/// of one bit per pixel at its end. The mask stays empty, because the colours contain the alpha
/// channel.
QByteArray bitmap(const QImage &image)
{
    constexpr std::uint32_t headerSize = 40;
    constexpr std::uint16_t planes = 1;
    constexpr std::uint16_t bits = 32;
    const int maskRow = (image.width() + 31) / 32 * 4;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << headerSize << std::int32_t(image.width()) << std::int32_t(2 * image.height())
           << planes << bits;
    for (int unused = 0; unused < 6; ++unused)
        stream << std::uint32_t(0);
    for (int y = image.height() - 1; y >= 0; --y)
        for (int x = 0; x < image.width(); ++x)
            stream << std::uint32_t(image.pixel(x, y));
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

/// Returns an icon file with all pictures. The large ones are PNG images, which keeps the file
/// small. The others are bitmaps, which every program can read.
QByteArray iconFile()
{
    constexpr std::uint16_t typeIcon = 1;
    constexpr std::uint16_t planes = 1;
    constexpr std::uint16_t bits = 32;
    constexpr int directorySize = 6;
    constexpr int entrySize = 16;
    QVector<QByteArray> pictures;
    for (const int size : sizes)
        pictures.append(size > largestBitmap ? png(picture(size)) : bitmap(picture(size)));

    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << std::uint16_t(0) << typeIcon << static_cast<std::uint16_t>(pictures.size());
    int offset = directorySize + entrySize * pictures.size();
    for (int i = 0; i < pictures.size(); ++i) {
        const auto side = static_cast<std::uint8_t>(sizes[i] % largest);
        stream << side << side << std::uint16_t(0) << planes << bits;
        stream << static_cast<std::uint32_t>(pictures[i].size())
               << static_cast<std::uint32_t>(offset);
        offset += pictures[i].size();
    }
    return bytes + pictures.toList().join();
}

/// Draws the picture beside the texts of the installer's first and last pages.
void installerSide(QPainter &painter)
{
    drawing::fill(painter, QRectF(QPointF(), installerSize), colours::page);
    const QRectF line(installerSize.width() - 2, 0, 2, installerSize.height());
    drawing::fill(painter, line, colours::accent);
    painter.translate((installerSize.width() - 2 - drawnSize) / 2.0, drawnSize);
    controls::icon(painter);
}

bool writeInstallerSide(const QString &fileName)
{
    return drawing::drawn(installerSize, 1, installerSide)
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
