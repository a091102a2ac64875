#pragma once

#include "storage/disk.h"
#include "storage/initext.h"

/// Files that are only ever replaced whole: the new content lies complete and on the medium beside
/// the file before it takes its place. Whenever the process is killed or the disk fails, the file
/// is the old one or the new one.
namespace storage {

/// The INI file of this organisation and application in the user's settings folder. A "/" at the
/// beginning of the application makes no difference.
QString pathOf(const char *organisation, const char *application);

/// What could be read of a file.
enum class FileHealth {
    Good,
    Missing,    ///< there is no file
    Damaged,    ///< a part of it cannot be read
    Unreadable, ///< it cannot be opened, or nothing in it can be read
};

struct FileContent
{
    FileHealth health = FileHealth::Missing;
    Entries entries;
    QByteArray bytes; ///< of a good file
};

FileContent readFile(Disk &disk, const QString &path);

/// Replaces a file, or makes it. A symbolic link is followed and stays, and so do the permissions.
/// False if any step fails: writing, flushing, syncing, closing, the length on the disk, or the
/// renaming. The old file is then untouched.
bool replaceFile(Disk &disk, const QString &path, const QByteArray &content);

/// Removes what a process that was killed in replaceFile() has left beside a file. Only names that
/// replaceFile() makes are touched.
void removeLeftovers(Disk &disk, const QString &path);

/// Why a file is kept beside the one that takes its place.
enum class KeptAs {
    Damaged,    ///< a part of it could not be read
    Unreadable, ///< nothing of it could be read
    Foreign,    ///< somebody else has written it
};

/// Keeps a copy of a file beside it, named after the reason: "NAME.kept-damaged". A copy for the
/// same reason is replaced, and at most five copies are kept in all. False if no copy could be
/// made, which is logged.
bool keepCopy(Disk &disk, const QString &path, KeptAs reason);

} // namespace storage
