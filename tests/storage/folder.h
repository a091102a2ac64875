#pragma once

#include "storage/settings.h"
#include "tests/inifile.h"

#include <QDir>

#include <memory>

/// A new settings folder for a test, in the private home of the process.
struct Folder
{
    /// @param live content of the settings file; null for no file
    explicit Folder(const QByteArray &live = QByteArray())
        : organisation("Folder" + QByteArray::number(++count()))
    {
        if (!path().contains("tamber-test."_s)) qFatal("run it with tests/in-private-home");
        QDir().mkpath(path());
        if (!live.isNull()) write(settingsName, live);
    }
    std::unique_ptr<Settings> open() const
    {
        return std::make_unique<Settings>(organisation.constData(), "Tamber_Setting");
    }
    QString path() const
    {
        return qEnvironmentVariable("XDG_CONFIG_HOME") + "/"_s + QLatin1String(organisation);
    }
    QString file(const QString &name = settingsName) const { return path() + "/"_s + name; }
    void write(const QString &name, const QByteArray &content) const
    {
        QFile out(file(name));
        out.open(QIODevice::WriteOnly);
        out.write(content);
    }
    QByteArray bytes(const QString &name = settingsName) const { return bytesOf(file(name)); }
    IniContent content() const { return readIni(file()); }
    QStringList entries() const { return entriesOf(content()); }
    QStringList names() const { return QDir(path()).entryList(QDir::Files); }
    /// The number of copies of the settings file with this content.
    int copies(const QByteArray &wanted) const
    {
        int equal = 0;
        for (const QString &name : QDir(path()).entryList({settingsName + ".*"_s}))
            equal += bytes(name) == wanted;
        return equal;
    }

    static inline const QString settingsName = "Tamber_Setting.ini"_s;
    const QByteArray organisation;

private:
    static int &count()
    {
        static int folders = 0;
        return folders;
    }
};
