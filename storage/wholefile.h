#pragma once

#include "storage/disk.h"
#include "storage/initext.h"

#include <optional>

/// Files that are only ever replaced as a whole. The new content is written to a second file and is
/// complete on the medium before that file replaces the old one. So a crash or a disk failure
/// leaves either the old file or the new one. Any thread, one at a time for each file.
namespace storage {

/// Returns the path of the INI file of this organisation and application in the user's settings
/// folder. Ignores a leading "/" of the application.
QString pathOf(const char *organisation, const char *application);

/// How much of a file was readable.
enum class FileHealth {
    Good,
    Missing,    ///< the file does not exist
    Damaged,    ///< a part of the file is unreadable
    Unreadable, ///< the file cannot be opened, or nothing in it is readable
};

struct FileContent
{
    FileHealth health = FileHealth::Missing;
    Entries entries;  ///< the readable ones
    QByteArray bytes; ///< the whole file if it is good, otherwise null
};

/// Returns the bytes of a file, null if it does not exist. Returns nothing if it cannot be read or
/// has more than `most` bytes.
std::optional<QByteArray> readAtMost(Disk &disk, const QString &path, int most);

/// Reads a settings file. Never fails; FileContent::health tells how much was readable.
FileContent readFile(Disk &disk, const QString &path);

/// Replaces or creates a file. Follows a symbolic link and keeps the link and the permissions.
/// Returns false if any step fails: writing, flushing, syncing, closing, the length on the disk, or
/// renaming. The old file is then unchanged.
bool replaceFile(Disk &disk, const QString &path, const QByteArray &content);

/// Removes temporary files that replaceFile() left beside a file when its process was killed.
/// Removes no other files.
void removeLeftovers(Disk &disk, const QString &path);

/// Why a copy of a file is kept.
enum class KeptAs {
    Damaged,    ///< a part of the file was unreadable
    Unreadable, ///< the whole file was unreadable
    Foreign,    ///< another program has written the file
};

/// Keeps a copy of a file beside it, named after the reason: "NAME.kept-damaged". Replaces an older
/// copy with the same reason, and removes the oldest copies if there are more than five. Returns
/// false if no copy could be made. The result is logged.
bool keepCopy(Disk &disk, const QString &path, KeptAs reason);

} // namespace storage
