#include "storage/wholefile.h"

#include "storage/inicodec.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSettings>

#include <filesystem>

namespace storage {
namespace {

constexpr int leftoverAge = 60; // seconds

} // namespace

QString pathOf(const char *organisation, const char *application)
{
    const QSettings store(
        QSettings::IniFormat, QSettings::UserScope, QLatin1String(organisation),
        QLatin1String(application));
    return QDir::cleanPath(store.fileName());
}

QString freshName(const QString &fileName)
{
    return fileName + QStringLiteral(".%1.new").arg(QCoreApplication::applicationPid());
}

void removeLeftovers(const QString &fileName)
{
    const QFileInfo file(fileName);
    const QString own = QFileInfo(freshName(fileName)).fileName();
    QDir folder = file.dir();
    const QStringList left =
        folder.entryList({file.fileName() + QStringLiteral(".*.new*")}, QDir::Files);
    for (const QString &name : left) {
        // Another process may be writing a younger one just now. One with the id of this process
        // is of a former one that had the same id.
        const QFileInfo leftover(folder.filePath(name));
        const qint64 age = leftover.lastModified().secsTo(QDateTime::currentDateTime());
        if (age > leftoverAge || name.startsWith(own)) folder.remove(name);
    }
}

FileHealth readValues(const QString &fileName, Values &values)
{
    const FileHealth health = inspect(fileName);
    if (health == FileHealth::Missing || health == FileHealth::Unreadable) return health;
    QSettings store(fileName, QSettings::IniFormat);
    store.setIniCodec(iniCodec());
    const QStringList keys = store.allKeys();
    for (const QString &key : keys)
        values.insert(key, store.value(key));
    if (keys.isEmpty()) return FileHealth::Unreadable;
    return store.status() == QSettings::FormatError ? FileHealth::Damaged : health;
}

bool writeValues(const QString &fileName, const Values &values)
{
    const QString fresh = freshName(fileName);
    bool written = false;
    {
        QSettings store(fresh, QSettings::IniFormat);
        store.setIniCodec(iniCodec());
        for (auto value = values.cbegin(); value != values.cend(); ++value)
            store.setValue(value.key(), value.value());
        store.sync();
        written = store.status() == QSettings::NoError;
    }
    if (written && replaceFile(fileName, fresh)) return true;
    QFile::remove(fresh);
    return false;
}

bool makeCopy(const QString &of, const QString &fileName)
{
    QFile original(of);
    if (!original.open(QIODevice::ReadOnly)) return false;
    const QByteArray content = original.readAll();
    if (original.error() != QFileDevice::NoError) return false;
    QSaveFile copy(fileName); // its commit waits for the disk
    return copy.open(QIODevice::WriteOnly) && copy.write(content) == content.size() &&
           copy.commit();
}

bool copyWhole(const QString &from, const QString &fileName)
{
    const QString fresh = freshName(fileName);
    if (makeCopy(from, fresh) && replaceFile(fileName, fresh)) return true;
    QFile::remove(fresh);
    return false;
}

bool replaceFile(const QString &fileName, const QString &by)
{
    const auto path = [](const QString &name) {
        return std::filesystem::path(name.toStdU16String());
    };
    std::error_code error;
    std::filesystem::rename(path(by), path(fileName), error);
    return !error;
}

} // namespace storage
