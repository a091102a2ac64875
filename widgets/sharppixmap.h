#pragma once

#include <QPixmap>
#include <QString>

/// Returns an image in the size that suits the screen: the "@2x" file beside it, if there is one
/// and the pixel ratio is above 1, else the image itself. Returns a null pixmap if the image does
/// not exist. GUI thread only.
/// @param path ends in ".png"
QPixmap sharpPixmap(const QString &path);
