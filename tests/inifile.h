#pragma once

#include "tests/shorthand.h"

#include <QFile>
#include <QMap>

/// The content of a settings file on disk, read without the code of the panel: "Group/key" and the
/// value without quotes.
using IniContent = QMap<QString, QString>;

inline QByteArray bytesOf(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline IniContent readIni(const QString &fileName)
{
    IniContent content;
    QString group;
    const QString text = QString::fromUtf8(bytesOf(fileName)).remove(QLatin1Char('\r'));
    for (const QString &line : text.split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1Char('['))) group = line.mid(1, line.length() - 2) + "/"_s;
        const int equals = line.indexOf(QLatin1Char('='));
        if (equals < 0) continue;
        QString value = line.mid(equals + 1);
        if (value.startsWith(QLatin1Char('"'))) value = value.mid(1, value.length() - 2);
        content.insert(group + line.left(equals), value);
    }
    return content;
}

/// "Group/key=value" of each entry, so that a failed comparison shows the difference.
inline QStringList entriesOf(const IniContent &content)
{
    QStringList entries;
    for (auto entry = content.begin(); entry != content.end(); ++entry)
        entries += entry.key() + QLatin1Char('=') + *entry;
    return entries;
}
