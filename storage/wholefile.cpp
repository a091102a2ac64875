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
constexpr int mostCopies = 5;
constexpr int mostLinks = 8; // that are followed one after the other

/// Where a path leads. The end of a chain of links need not exist.
QString followLinks(const QString &path)
{
    QString target = path;
    for (int i = 0; i < mostLinks && QFileInfo(target).isSymLink(); ++i)
        target = QFileInfo(target).symLinkTarget();
    return target;
}

/// A name beside a file under which a new one is made. It is this process's own.
QString freshName(const QString &path)
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

/// Removes the oldest copies. Those that older versions of the panel have named with the time count
/// as well.
void removeOldCopies(Disk &disk, const QFileInfo &original, const QString &newest)
{
    QFileInfoList copies = original.dir().entryInfoList(
        {original.fileName() + QStringLiteral(".kept-*")}, QDir::Files, QDir::Time);
    copies.removeOne(QFileInfo(newest));
    for (int i = mostCopies - 1; i < copies.size(); ++i)
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
    // Qt opens the file that it is asked for. So it is asked for one that does not exist, and the
    // name is put into its folder.
    const QSettings beside(
        QSettings::IniFormat, QSettings::UserScope, QLatin1String(organisation),
        QStringLiteral("none.%1").arg(QCoreApplication::applicationPid()));
    const QDir folder = QFileInfo(beside.fileName()).dir();
    return QDir::cleanPath(
        folder.absolutePath() + QLatin1Char('/') + QLatin1String(application) +
        QStringLiteral(".ini"));
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
    const QString fresh = freshName(target);
    if (writeWhole(disk, fresh, content)) {
        if (disk.size(target) >= 0) disk.copyPermissions(target, fresh);
        if (disk.rename(fresh, target)) return true;
    }
    disk.remove(fresh);
    return false;
}

void removeLeftovers(Disk &disk, const QString &path)
{
    const QFileInfo file(followLinks(path));
    const QString own = QFileInfo(freshName(file.filePath())).fileName();
    const QRegularExpression made(QRegularExpression::anchoredPattern(
        QRegularExpression::escape(file.fileName()) + QStringLiteral("\\.\\d+\\.new")));
    const QFileInfoList left =
        file.dir().entryInfoList({file.fileName() + QStringLiteral(".*.new")}, QDir::Files);
    for (const QFileInfo &leftover : left) {
        if (!made.match(leftover.fileName()).hasMatch()) continue;
        // Another process may be writing a younger one just now. One with the id of this process
        // is of a former one that had the same id.
        const qint64 age = leftover.lastModified().secsTo(QDateTime::currentDateTime());
        if (age > leftoverAge || leftover.fileName() == own) disk.remove(leftover.filePath());
    }
}

bool keepCopy(Disk &disk, const QString &path, KeptAs reason)
{
    const QString original = followLinks(path);
    const QString copy = original + QStringLiteral(".kept-") + nameOf(reason);
    const QString fresh = freshName(original);
    bool kept = copyFile(disk, original, fresh) && disk.rename(fresh, copy);
    if (!kept) {
        // A file that cannot be read, or for which there is no room, can still have a second name.
        disk.remove(fresh);
        kept = disk.link(original, fresh) && disk.rename(fresh, copy);
    }
    if (kept)
        qCWarning(log) << "a copy of it is kept as" << copy;
    else
        qCWarning(log) << "no copy of it could be kept as" << copy;
    removeOldCopies(disk, QFileInfo(original), copy);
    return kept;
}

} // namespace storage
