#include "storage/filehealth.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

#include <algorithm>

namespace storage {
namespace {

Q_LOGGING_CATEGORY(log, "tamber.storage")

/// A byte that the store never writes: it escapes all of them in texts, but for DEL.
bool isControl(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte < ' ' && c != '\n' && c != '\r' && c != '\t';
}

bool sameContent(const QString &a, const QString &b)
{
    QFile first(a);
    QFile second(b);
    return first.open(QIODevice::ReadOnly) && second.open(QIODevice::ReadOnly) &&
           first.size() == second.size() && first.readAll() == second.readAll();
}

} // namespace

FileHealth inspect(const QString &fileName)
{
    if (!QFileInfo::exists(fileName)) return FileHealth::Missing;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) return FileHealth::Unreadable;
    const QByteArray content = file.readAll();
    if (content.isEmpty()) return FileHealth::Missing;
    if (std::any_of(content.begin(), content.end(), isControl)) return FileHealth::Unreadable;
    return content.endsWith('\n') ? FileHealth::Good : FileHealth::Damaged;
}

void keepCopy(const QString &fileName)
{
    const QFileInfo original(fileName);
    if (!original.isFile()) return;
    const QString stem = original.fileName() + QStringLiteral(".kept-");
    const QDir folder = original.dir();
    const QStringList copies = folder.entryList({stem + QLatin1Char('*')}, QDir::Files);
    const bool kept = std::any_of(copies.begin(), copies.end(), [&](const QString &copy) {
        return sameContent(fileName, folder.filePath(copy));
    });
    if (kept) return;
    const QString time =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
    const QString copy = folder.filePath(stem + time);
    if (QFile::copy(fileName, copy))
        qCWarning(log) << "a copy of it is kept as" << copy;
    else
        qCWarning(log) << "no copy of it could be kept as" << copy;
}

} // namespace storage
