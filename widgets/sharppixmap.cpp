#include "widgets/sharppixmap.h"

#include <QFile>
#include <QGuiApplication>

QPixmap sharpPixmap(const QString &path)
{
    // Style sheets choose the "@2x" file by themselves, a pixmap loaded from a path does not.
    if (qGuiApp->devicePixelRatio() > 1.0) {
        QString doubled = path;
        doubled.insert(path.lastIndexOf(QLatin1Char('.')), QLatin1String("@2x"));
        if (QFile::exists(doubled)) return QPixmap(doubled);
    }
    return QPixmap(path);
}
