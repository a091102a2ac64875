#pragma once

#include <QPixmap>
#include <QString>

/// Loads the image at `path`, ending in ".png", in the size that suits the screens: its "@2x"
/// companion on a screen with a pixel ratio above 1, if there is one. Null when there is no such
/// image. GUI thread.
QPixmap sharpPixmap(const QString &path);
