#include "widgets/sharppixmap.h"

#include <QFile>
#include <QGuiApplication>

QPixmap sharpPixmap(const QString &path)
{
    // Qt chooses the "@2x" file for images of style sheets, but not for pixmaps loaded from a path.
    if (qGuiApp->devicePixelRatio() > 1.0) {
        QString doubled = path;
        doubled.insert(path.lastIndexOf(QLatin1Char('.')), QLatin1String("@2x"));
        if (QFile::exists(doubled)) return QPixmap(doubled);
    }
    return QPixmap(path);
}
