#pragma once

class QString;

namespace storage {

/// What a settings file looks like before it is read.
enum class FileHealth {
    Good,
    Missing,    ///< not there, or empty
    Damaged,    ///< its last line has no end, or another one cannot be read
    Unreadable, ///< cannot be opened, is no text, or says nothing
};

FileHealth inspect(const QString &fileName);

/// Keeps a copy of a file beside it, named with the time, unless an equal copy is there already.
/// A failure is logged.
void keepCopy(const QString &fileName);

} // namespace storage
