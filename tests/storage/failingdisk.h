#pragma once

#include "storage/disk.h"

#include <QThread>

#include <atomic>

/// The real disk, except that the n-th operation fails.
class FailingDisk final : public storage::Disk
{
public:
    enum class Way {
        NoSpace, ///< nothing is written, and the operation reports failure
        Short,   ///< half is written, and the operation reports failure
        Silent,  ///< half is written, and the operation reports success
    };

    /// @param n the operation that fails, counted from 1; 0 for none. Later operations succeed.
    void failAt(int n, Way way = Way::NoSpace)
    {
        m_failing = n;
        m_way = way;
        m_count = 0;
    }
    /// The number of operations since the last failAt().
    int count() const { return m_count; }
    bool readable = true; ///< whether reads succeed
    /// While set, all operations that write fail.
    std::atomic<bool> isFull{false};
    /// While set, operations that write do not return.
    std::atomic<bool> isStuck{false};
    int reads() const { return m_reads; }

    Read read(const QString &path, const Sink &sink) override
    {
        ++m_reads;
        return readable ? m_real.read(path, sink) : Read::Failed;
    }
    std::unique_ptr<Output> create(const QString &path) override
    {
        if (fails()) return nullptr;
        auto file = m_real.create(path);
        if (!file) return nullptr;
        return std::make_unique<File>(*this, std::move(file));
    }
    void copyPermissions(const QString &from, const QString &to) override
    {
        m_real.copyPermissions(from, to);
    }
    qint64 size(const QString &path) override { return m_real.size(path); }
    bool rename(const QString &from, const QString &to) override
    {
        return !fails() && m_real.rename(from, to);
    }
    bool link(const QString &from, const QString &to) override
    {
        return !fails() && m_real.link(from, to);
    }
    bool remove(const QString &path) override { return m_real.remove(path); }

private:
    class File final : public Output
    {
    public:
        File(FailingDisk &disk, std::unique_ptr<Output> file)
            : m_disk(disk), m_file(std::move(file))
        {
        }
        bool write(const QByteArray &bytes) override
        {
            if (!m_disk.fails()) return m_file->write(bytes);
            if (m_disk.m_way != Way::NoSpace) m_file->write(bytes.left(bytes.size() / 2));
            return m_disk.m_way == Way::Silent;
        }
        bool flush() override { return !m_disk.fails() && m_file->flush(); }
        bool sync() override { return !m_disk.fails() && m_file->sync(); }
        bool close() override { return m_file->close() && !m_disk.fails(); }

    private:
        FailingDisk &m_disk;
        std::unique_ptr<Output> m_file;
    };

    bool fails()
    {
        while (isStuck)
            QThread::msleep(1);
        return ++m_count == m_failing || isFull;
    }

    storage::Disk &m_real = storage::realDisk();
    // The settings file is written on another thread.
    std::atomic<int> m_failing{0};
    std::atomic<int> m_count{0};
    int m_reads = 0;
    std::atomic<Way> m_way{Way::NoSpace};
};
