#include "storage/disk.h"

#include "storage/syncfile.h"

#include <QFile>
#include <QFileInfo>

#include <filesystem>

namespace storage {
namespace {

std::filesystem::path native(const QString &path)
{
    return std::filesystem::path(path.toStdU16String());
}

class RealOutput final : public Disk::Output
{
public:
    explicit RealOutput(const QString &path) : m_file(path) {}

    bool open() { return m_file.open(QIODevice::WriteOnly | QIODevice::Truncate); }
    bool write(const QByteArray &bytes) override { return m_file.write(bytes) == bytes.size(); }
    bool flush() override { return m_file.flush(); }
    bool sync() override { return syncFile(m_file.handle()); }
    bool close() override
    {
        m_file.close();
        return m_file.error() == QFileDevice::NoError;
    }

private:
    QFile m_file;
};

class RealDisk final : public Disk
{
public:
    Read read(const QString &path, const Sink &sink) override
    {
        const QFileInfo info(path);
        if (!info.exists() && !info.isSymLink()) return Read::Missing;
        if (!info.isFile()) return Read::Failed;
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) return Read::Failed;
        char piece[64 * 1024];
        for (qint64 count; (count = file.read(piece, sizeof piece)) != 0;) {
            if (count < 0) return Read::Failed;
            if (!sink(piece, count)) break;
        }
        return Read::Done;
    }

    std::unique_ptr<Output> create(const QString &path) override
    {
        auto output = std::make_unique<RealOutput>(path);
        if (!output->open()) return nullptr;
        return output;
    }

    void copyPermissions(const QString &from, const QString &to) override
    {
        QFile::setPermissions(to, QFile::permissions(from));
    }

    qint64 size(const QString &path) override
    {
        const QFileInfo info(path);
        return info.exists() ? info.size() : -1;
    }

    bool rename(const QString &from, const QString &to) override
    {
        std::error_code error;
        std::filesystem::rename(native(from), native(to), error);
        if (!error) syncFolderOf(to);
        return !error;
    }

    bool link(const QString &from, const QString &to) override
    {
        std::error_code error;
        std::filesystem::create_hard_link(native(from), native(to), error);
        return !error;
    }

    bool remove(const QString &path) override
    {
        QFile::remove(path);
        const QFileInfo info(path);
        return !info.exists() && !info.isSymLink();
    }
};

} // namespace

Disk &realDisk()
{
    static RealDisk disk;
    return disk;
}

} // namespace storage
