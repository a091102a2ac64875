#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

namespace storage {

/// The file operations that storing the settings needs. Every step that can fail is a separate
/// operation, so that a test can make each of them fail. Paths are absolute. Any thread, but only
/// one at a time for a file.
class Disk
{
public:
    /// A file that is being written. Destroying the object closes the file. Each function returns
    /// false if it fails.
    class Output
    {
    public:
        virtual ~Output() = default;

        /// Writes all bytes.
        virtual bool write(const QByteArray &bytes) = 0;
        /// Passes buffered bytes to the operating system.
        virtual bool flush() = 0;
        /// Waits until the bytes are on the medium.
        virtual bool sync() = 0;
        virtual bool close() = 0;
    };

    /// The result of read().
    enum class Read {
        Done,
        Missing, ///< the file does not exist
        Failed,  ///< the file cannot be opened or read, or is not a regular file
    };
    /// Receives the next bytes of a file. Returns false if it does not want the rest.
    using Sink = std::function<bool(const char *bytes, qint64 count)>;

    virtual ~Disk() = default;

    /// Passes a regular file to the sink piece by piece. Follows symbolic links. Fails for a pipe
    /// or a folder without opening it.
    virtual Read read(const QString &path, const Sink &sink) = 0;
    /// Creates a file, or empties an existing one. Returns null if that fails.
    virtual std::unique_ptr<Output> create(const QString &path) = 0;
    /// Gives the file `to` the permissions of the file `from`.
    virtual void copyPermissions(const QString &from, const QString &to) = 0;
    /// Returns the size of a file in bytes, or -1 if it does not exist.
    virtual qint64 size(const QString &path) = 0;
    /// Renames a file within its folder and replaces a file with the new name, in one step.
    virtual bool rename(const QString &from, const QString &to) = 0;
    /// Gives a file a second name in its folder (a hard link). Fails if the name is in use.
    virtual bool link(const QString &from, const QString &to) = 0;
    /// Removes a file. Returns true if the file does not exist afterwards.
    virtual bool remove(const QString &path) = 0;
};

/// Returns the disk of this computer.
Disk &realDisk();

} // namespace storage
