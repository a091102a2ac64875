#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

namespace storage {

/// The operations on files that keeping the settings consists of. Every step that can fail is an
/// operation of its own, so that a test can let each of them fail. Paths are absolute. GUI thread
/// only.
class Disk
{
public:
    /// A new file. Destroying it closes it.
    class Output
    {
    public:
        virtual ~Output() = default;

        /// False unless all bytes were taken.
        virtual bool write(const QByteArray &bytes) = 0;
        /// Hands what is buffered to the system.
        virtual bool flush() = 0;
        /// Waits until the bytes are on the medium.
        virtual bool sync() = 0;
        virtual bool close() = 0;
    };

    enum class Read {
        Done,
        Missing, ///< there is no such file
        Failed,  ///< it cannot be opened or read, or is no regular file
    };
    /// Takes the next bytes of a file. False if the rest is not wanted.
    using Sink = std::function<bool(const char *bytes, qint64 count)>;

    virtual ~Disk() = default;

    /// Hands a regular file to the sink piece by piece. A link is followed. A pipe or a folder
    /// fails without being opened.
    virtual Read read(const QString &path, const Sink &sink) = 0;
    /// Makes a file, or empties the one that is there. Null if that fails.
    virtual std::unique_ptr<Output> create(const QString &path) = 0;
    /// Gives a file the permissions of another one.
    virtual void copyPermissions(const QString &from, const QString &to) = 0;
    /// Bytes in a file, -1 if there is none.
    virtual qint64 size(const QString &path) = 0;
    /// Gives a file another name in its folder and replaces what has that name, in one step.
    virtual bool rename(const QString &from, const QString &to) = 0;
    /// Gives a file a second name in its folder, which must be free.
    virtual bool link(const QString &from, const QString &to) = 0;
    /// True if there is no such file afterwards.
    virtual bool remove(const QString &path) = 0;
};

/// The disk of this computer.
Disk &realDisk();

} // namespace storage
