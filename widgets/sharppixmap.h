#pragma once

#include <QPixmap>
#include <QString>

/// Returns an image scaled smoothly to the exact ratio of a screen. Each image is loaded and scaled
/// once for each ratio and then kept. Returns a null pixmap if the image does not exist. GUI thread
/// only.
/// @param path ends in ".png"; the "@2x" file beside it is used for ratios above 1
/// @param ratio device pixels of the screen for one pixel
QPixmap sharpPixmap(const QString &path, qreal ratio);
