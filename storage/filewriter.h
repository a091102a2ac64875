#pragma once

#include "storage/values.h"
#include "storage/wholefile.h"

#include <QDateTime>
#include <QObject>
#include <QRunnable>
#include <QThreadPool>

#include <atomic>

namespace storage {

/// Replaces one settings file again and again, in the background or at once. Keeps a copy of a file
/// that it has not written itself. GUI thread only; the background is one thread, which exists only
/// while files are written and for a while afterwards.
class FileWriter : public QObject, private QRunnable
{
    Q_OBJECT

public:
    /// A new content of the file.
    struct Job
    {
        Values values;
        QByteArray bytes;      ///< the content, or null for that of `values`
        bool isUnread = false; ///< the present file is unreadable and must be copied first
    };
    struct Result
    {
        bool isWritten = false;
        bool isForeignReplaced = false; ///< another program had changed the file
        bool isUnread = false;          ///< the unreadable file is still there, without a copy
    };

    FileWriter(Disk &disk, const QString &path);
    /// Waits for the write in the background.
    ~FileWriter() override { m_pool.waitForDone(); }

    /// The present content of the file is known. Must not be called while a write is under way.
    void noteRead() { m_stamp = stampOfFile(); }

    /// Returns whether a write is under way in the background.
    bool isBusy() const { return m_isBusy; }
    /// Starts a write in the background, which ends with finished(). None may be under way.
    void start(Job job);
    /// Waits for the write in the background, if there is one, and emits its finished().
    void finish();
    /// Writes now. No other write may be under way.
    Result write(const Job &job);

signals:
    /// A write in the background has ended.
    void finished(const storage::FileWriter::Result &result);

private:
    struct Stamp
    {
        QDateTime modified;
        qint64 size = -1;
        bool operator==(const Stamp &o) const { return modified == o.modified && size == o.size; }
    };

    void run() override;
    void takeResult();
    Stamp stampOfFile() const;
    bool keepForeignFile();

    Disk &m_disk;
    const QString m_path;
    Stamp m_stamp; ///< of the file when it was last read or written
    bool m_isBusy = false;
    // The two threads hand job and result over by these.
    std::atomic<Job *> m_job{nullptr};
    std::atomic<bool> m_hasResult{false};
    Result m_result;
    QThreadPool m_pool;
};

} // namespace storage
