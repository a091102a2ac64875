#include "storage/settings.h"

#include "storage/inicodec.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSettings>

#include <filesystem>

using namespace storage;

namespace {

Q_LOGGING_CATEGORY(log, "tamber.storage")

constexpr int flushInterval = 50;   // milliseconds between two writes of the file
constexpr int leftoverAge = 60;     // seconds
constexpr int retryInterval = 2000; // milliseconds until a failed write is tried again

QString pathOf(const char *organisation, const char *application)
{
    const QSettings store(
        QSettings::IniFormat, QSettings::UserScope, QLatin1String(organisation),
        QLatin1String(application));
    return store.fileName();
}

/// The name under which a new file is made. It is this process's own, so that nobody's lock on it
/// can keep the write waiting.
QString freshName(const QString &fileName)
{
    return fileName + QStringLiteral(".%1.new").arg(QCoreApplication::applicationPid());
}

/// What processes that were killed while they wrote have left.
void removeLeftovers(const QFileInfo &file)
{
    QDir folder = file.dir();
    const QStringList left =
        folder.entryList({file.fileName() + QStringLiteral(".*.new*")}, QDir::Files);
    for (const QString &name : left) {
        // Another process may be writing a younger one just now.
        const QFileInfo leftover(folder.filePath(name));
        if (leftover.lastModified().secsTo(QDateTime::currentDateTime()) > leftoverAge)
            folder.remove(name);
    }
}

bool replace(const QString &fileName, const QString &by)
{
    const auto path = [](const QString &name) {
        return std::filesystem::path(name.toStdU16String());
    };
    std::error_code error;
    std::filesystem::rename(path(by), path(fileName), error);
    return !error;
}

} // namespace

Settings::Settings(const char *organisation, const char *application)
    : m_fileName(pathOf(organisation, application))
{
    m_timer.setSingleShot(true);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { flush(); });
    open();
}

Settings::~Settings()
{
    m_timer.stop();
    flush();
}

void Settings::open()
{
    removeLeftovers(QFileInfo(m_fileName));
    m_stamp = stampOfFile();
    switch (load()) {
    case FileHealth::Good:
        return;
    case FileHealth::Missing:
        qCInfo(log) << "no settings yet, starting with the defaults:" << m_fileName;
        return;
    case FileHealth::Damaged:
        qCWarning(log) << "the settings file is damaged, what is missing takes its default:"
                       << m_fileName;
        break;
    case FileHealth::Unreadable:
        qCWarning(log) << "the settings file cannot be read, starting with the defaults:"
                       << m_fileName;
        break;
    }
    keepCopy(m_fileName);
}

FileHealth Settings::load()
{
    const FileHealth health = inspect(m_fileName);
    if (health == FileHealth::Missing || health == FileHealth::Unreadable) return health;
    QSettings store(m_fileName, QSettings::IniFormat);
    store.setIniCodec(iniCodec());
    const QStringList keys = store.allKeys();
    for (const QString &key : keys)
        m_values.insert(key, store.value(key));
    if (m_values.isEmpty()) return FileHealth::Unreadable;
    return store.status() == QSettings::FormatError ? FileHealth::Damaged : health;
}

Settings::Stamp Settings::stampOfFile() const
{
    const QFileInfo info(m_fileName);
    return info.isFile() ? Stamp{info.lastModified(), info.size()} : Stamp();
}

void Settings::flush()
{
    m_timer.stop();
    if (!m_changed) return;
    const Stamp found = stampOfFile();
    if (found.size > 0 && !(found == m_stamp)) {
        qCWarning(log) << "somebody has changed the settings file, which is replaced:"
                       << m_fileName;
        keepCopy(m_fileName);
        m_stamp = found;
    }
    const bool written = writeFile();
    if (written) m_stamp = stampOfFile();
    m_sinceFlush.start();
    m_changed = !written;
    noteResult(written);
}

bool Settings::writeFile()
{
    const QString fresh = freshName(m_fileName);
    bool written = false;
    {
        QSettings store(fresh, QSettings::IniFormat);
        store.setIniCodec(iniCodec());
        for (auto value = m_values.cbegin(); value != m_values.cend(); ++value)
            store.setValue(value.key(), value.value());
        store.sync();
        written = store.status() == QSettings::NoError;
    }
    if (written && replace(m_fileName, fresh)) return true;
    QFile::remove(fresh);
    return false;
}

void Settings::noteResult(bool written)
{
    if (!written && !m_failing)
        qCWarning(log) << "the settings file cannot be written:" << m_fileName;
    if (written && m_failing) qCInfo(log) << "the settings file is written again:" << m_fileName;
    m_failing = !written;
    if (m_failing) m_timer.start(retryInterval);
}

QVariant Settings::value(const QString &group, const char *key, const QVariant &missing) const
{
    return m_values.value(group + QLatin1Char('/') + QLatin1String(key), missing);
}

int Settings::integer(const QString &group, const char *key) const
{
    bool isNumber = false;
    // By way of the text: a number that is too large for an integer is none.
    const int number = value(group, key, missingInteger).toString().toInt(&isNumber);
    return isNumber ? number : missingInteger;
}

/// A text with commas that was not quoted, as by hand, was taken for a list.
QString Settings::text(const QString &group, const char *key) const
{
    return value(group, key, QString()).toStringList().join(QStringLiteral(", "));
}

void Settings::setValue(const QString &group, const char *key, const QVariant &value)
{
    m_values.insert(group + QLatin1Char('/') + QLatin1String(key), value);
    m_changed = true;
    if (m_timer.isActive()) return;
    const qint64 since = m_sinceFlush.isValid() ? m_sinceFlush.elapsed() : flushInterval;
    m_timer.start(static_cast<int>(qMax<qint64>(flushInterval - since, 0)));
}

int Settings::read(const QString &group, IntegerKey key) const
{
    return integer(group, key.key);
}

bool Settings::read(const QString &group, SwitchKey key) const
{
    return value(group, key.key, false).toBool();
}

QString Settings::read(const QString &group, TextKey key) const
{
    return text(group, key.key);
}

void Settings::write(const QString &group, IntegerKey key, int value)
{
    setValue(group, key.key, value);
}

void Settings::write(const QString &group, SwitchKey key, bool value)
{
    setValue(group, key.key, value);
}

void Settings::write(const QString &group, TextKey key, const QString &value)
{
    setValue(group, key.key, value);
}

void Settings::write(
    const QString &group, const PositionKeys &keys, int position, const QString &text)
{
    write(group, keys.position, position);
    write(group, keys.text, text);
}

int Settings::read(const IntegerSetting &setting) const
{
    return integer(QLatin1String(setting.group), setting.key);
}

bool Settings::read(const SwitchSetting &setting) const
{
    return value(QLatin1String(setting.group), setting.key, setting.missing).toBool();
}

QString Settings::read(const TextSetting &setting) const
{
    return text(QLatin1String(setting.group), setting.key);
}

void Settings::write(const IntegerSetting &setting, int value)
{
    setValue(QLatin1String(setting.group), setting.key, value);
}

void Settings::write(const SwitchSetting &setting, bool value)
{
    setValue(QLatin1String(setting.group), setting.key, value);
}

void Settings::write(const TextSetting &setting, const QString &value)
{
    setValue(QLatin1String(setting.group), setting.key, value);
}
