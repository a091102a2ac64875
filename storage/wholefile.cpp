#include "storage/wholefile.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QSettings>

namespace storage {
namespace {

Q_LOGGING_CATEGORY(log, "tamber.storage")

constexpr int leftoverAge = 60; // seconds
constexpr int maxCopies = 5;
constexpr int maxLinks = 8; // longest chain of symbolic links that is followed

/// Returns the path at the end of a chain of symbolic links. That file need not exist.
QString followLinks(const QString &path)
{
    QString target = path;
    for (int i = 0; i < maxLinks && QFileInfo(target).isSymLink(); ++i)
        target = QFileInfo(target).symLinkTarget();
    return target;
}

/// Returns the name of a temporary file beside a file. No other process uses the name.
QString temporaryName(const QString &path)
{
    return path + QStringLiteral(".%1.new").arg(QCoreApplication::applicationPid());
}

bool writeWhole(Disk &disk, const QString &path, const QByteArray &content)
{
    const std::unique_ptr<Disk::Output> output = disk.create(path);
    if (!output) return false;
    const bool written = output->write(content) && output->flush() && output->sync();
    const bool closed = output->close();
    return written && closed && disk.size(path) == content.size();
}

QString nameOf(KeptAs reason)
{
    switch (reason) {
    case KeptAs::Damaged:
        return QStringLiteral("damaged");
    case KeptAs::Unreadable:
        return QStringLiteral("unreadable");
    case KeptAs::Foreign:
        break;
    }
    return QStringLiteral("foreign");
}

/// Removes the oldest copies. Counts also the copies of older versions of the panel, whose names
/// contain the time.
void removeOldCopies(Disk &disk, const QFileInfo &original, const QString &newest)
{
    QFileInfoList copies = original.dir().entryInfoList(
        {original.fileName() + QStringLiteral(".kept-*")}, QDir::Files, QDir::Time);
    copies.removeOne(QFileInfo(newest));
    for (int i = maxCopies - 1; i < copies.size(); ++i)
        disk.remove(copies[i].filePath());
}

bool copyFile(Disk &disk, const QString &from, const QString &to)
{
    std::unique_ptr<Disk::Output> output = disk.create(to);
    if (!output) return false;
    bool written = true;
    const Disk::Read read = disk.read(from, [&](const char *bytes, qint64 count) {
        written = output->write(QByteArray::fromRawData(bytes, static_cast<int>(count)));
        return written;
    });
    written = written && output->flush() && output->sync();
    return output->close() && written && read == Disk::Read::Done;
}

} // namespace

QString pathOf(const char *organisation, const char *application)
{
    // Only QSettings knows the folder, but it would open the file. So it gets a name that does not
    // exist, and only the folder is used.
    const QSettings beside(
        QSettings::IniFormat, QSettings::UserScope, QLatin1String(organisation),
        QStringLiteral("none.%1").arg(QCoreApplication::applicationPid()));
    const QDir folder = QFileInfo(beside.fileName()).dir();
    return QDir::cleanPath(
        folder.absolutePath() + QLatin1Char('/') + QLatin1String(application) +
        QStringLiteral(".ini"));
}

std::optional<QByteArray> readAtMost(Disk &disk, const QString &path, int most)
{
    QByteArray bytes("");
    const Disk::Read result = disk.read(path, [&](const char *data, qint64 count) {
        bytes.append(data, static_cast<int>(count));
        return bytes.size() <= most;
    });
    if (result == Disk::Read::Missing) return QByteArray();
    const bool isWhole = result == Disk::Read::Done && bytes.size() <= most;
    return isWhole ? std::make_optional(bytes) : std::nullopt;
}

FileContent readFile(Disk &disk, const QString &path)
{
    FileContent content;
    IniReader reader;
    const Disk::Read read = disk.read(path, [&](const char *bytes, qint64 count) {
        content.bytes.append(bytes, static_cast<int>(count));
        if (content.bytes.size() > IniReader::mostText) content.bytes.clear();
        return reader.read(bytes, count);
    });
    reader.finish();
    content.entries = reader.entries();
    if (read == Disk::Read::Missing)
        content.health = FileHealth::Missing;
    else if (read == Disk::Read::Failed || content.entries.isEmpty())
        content.health = FileHealth::Unreadable;
    else
        content.health = reader.isDamaged() ? FileHealth::Damaged : FileHealth::Good;
    if (content.health != FileHealth::Good) content.bytes.clear();
    return content;
}

bool replaceFile(Disk &disk, const QString &path, const QByteArray &content)
{
    const QString target = followLinks(path);
    QDir().mkpath(QFileInfo(target).path());
    const QString temporary = temporaryName(target);
    disk.remove(temporary); // it could be a second name of the file
    if (writeWhole(disk, temporary, content)) {
        if (disk.size(target) >= 0) disk.copyPermissions(target, temporary);
        if (disk.rename(temporary, target)) return true;
    }
    disk.remove(temporary);
    return false;
}

void removeLeftovers(Disk &disk, const QString &path)
{
    const QFileInfo file(followLinks(path));
    const QString own = QFileInfo(temporaryName(file.filePath())).fileName();
    const QRegularExpression ours(QRegularExpression::anchoredPattern(
        QRegularExpression::escape(file.fileName()) + QStringLiteral("\\.\\d+\\.new")));
    const QFileInfoList left =
        file.dir().entryInfoList({file.fileName() + QStringLiteral(".*.new")}, QDir::Files);
    for (const QFileInfo &leftover : left) {
        if (!ours.match(leftover.fileName()).hasMatch()) continue;
        // Another process may be writing a recent file right now. A file with the id of this
        // process is from an earlier process with the same id.
        const qint64 age = leftover.lastModified().secsTo(QDateTime::currentDateTime());
        if (age > leftoverAge || leftover.fileName() == own) disk.remove(leftover.filePath());
    }
}

bool keepCopy(Disk &disk, const QString &path, KeptAs reason)
{
    const QString original = followLinks(path);
    const QString copy = original + QStringLiteral(".kept-") + nameOf(reason);
    const QString temporary = temporaryName(original);
    disk.remove(temporary); // it could be a second name of the file
    bool kept = copyFile(disk, original, temporary) && disk.rename(temporary, copy);
    if (!kept) {
        // Without read permission or disk space, a second name for the file still works.
        disk.remove(temporary);
        kept = disk.link(original, temporary) && disk.rename(temporary, copy);
        disk.remove(temporary); // stays if the copy was a second name of the file already
    }
    if (kept)
        qCWarning(log) << "a copy of the settings file is kept as" << copy;
    else
        qCWarning(log) << "no copy of the settings file could be kept as" << copy;
    removeOldCopies(disk, QFileInfo(original), copy);
    return kept;
}

} // namespace storage
