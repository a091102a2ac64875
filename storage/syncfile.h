#pragma once

class QString;

/// Waiting for the disk, which each platform does in its own way. Any thread.
namespace storage {

/// Waits until what was written to an open file is on the medium. False if it cannot get there.
/// @param descriptor of the C library
bool syncFile(int descriptor);

/// Waits until a new name in the folder of a file is on the medium, where the system needs to be
/// asked for it.
void syncFolderOf(const QString &path);

} // namespace storage
