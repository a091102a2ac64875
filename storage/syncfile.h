#pragma once

class QString;

/// Waiting for the disk. Each platform has its own implementation. Any thread.
namespace storage {

/// Waits until the bytes written to an open file are on the medium. Returns false if that fails.
/// @param descriptor a file descriptor of the C library
bool syncFile(int descriptor);

/// Waits until the names in the folder of a file are on the medium. Does nothing on a system that
/// does not need this. Failures are ignored.
void syncFolderOf(const QString &path);

} // namespace storage
