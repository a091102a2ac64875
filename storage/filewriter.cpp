#include "storage/filewriter.h"

#include <QFileInfo>
#include <QLoggingCategory>

#include <memory>

namespace storage {

Q_LOGGING_CATEGORY(log, "tamber.storage")

FileWriter::FileWriter(Disk &disk, const QString &path) : m_disk(disk), m_path(path)
{
    setAutoDelete(false);
}

void FileWriter::start(Job job)
{
    m_isBusy = true;
    m_job.store(new Job(std::move(job)));
    m_pool.start(this);
}

/// Runs in the background.
void FileWriter::run()
{
    const std::unique_ptr<const Job> job(m_job.exchange(nullptr));
    m_result = write(*job);
    m_hasResult.store(true);
    QMetaObject::invokeMethod(this, &FileWriter::takeResult, Qt::QueuedConnection);
}

void FileWriter::finish()
{
    if (!m_isBusy) return;
    m_pool.waitForDone();
    takeResult();
}

/// Does nothing if finish() has taken the result already.
void FileWriter::takeResult()
{
    if (!m_hasResult.exchange(false)) return;
    m_isBusy = false;
    emit finished(m_result);
}

FileWriter::Result FileWriter::write(const Job &job)
{
    Result result;
    result.isUnread =
        job.isUnread && m_disk.size(m_path) >= 0 && !keepCopy(m_disk, m_path, KeptAs::Unreadable);
    if (result.isUnread) return result;
    if (!job.isUnread) result.isForeignReplaced = keepForeignFile();
    const QByteArray bytes = job.bytes.isNull() ? toIni(job.values.entries()) : job.bytes;
    result.isWritten = bytes.isEmpty() ? m_disk.remove(m_path) : replaceFile(m_disk, m_path, bytes);
    m_stamp = stampOfFile();
    return result;
}

/// Keeps a copy of the file if another program has written it.
bool FileWriter::keepForeignFile()
{
    const Stamp found = stampOfFile();
    if (found.size <= 0 || found == m_stamp) return false;
    qCWarning(log) << "another program has changed the settings file; it will be replaced:"
                   << m_path;
    keepCopy(m_disk, m_path, KeptAs::Foreign);
    return true;
}

FileWriter::Stamp FileWriter::stampOfFile() const
{
    const QFileInfo info(m_path);
    return info.isFile() ? Stamp{info.lastModified(), info.size()} : Stamp();
}

} // namespace storage
