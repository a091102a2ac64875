#pragma once

class QString;

namespace storage {

/// What a settings file looks like before it is read.
enum class FileHealth {
    Good,
    Missing,    ///< not there, or empty
    CutOff,     ///< its last line has no end
    Unreadable, ///< cannot be opened, or is no text
};

FileHealth inspect(const QString &fileName);

/// Keeps a copy of a file beside it, named with the time, unless an equal copy is there already.
/// A failure is logged.
void keepCopy(const QString &fileName);

} // namespace storage
