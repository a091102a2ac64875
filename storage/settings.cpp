#include "storage/settings.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

#include <algorithm>

using namespace storage;

namespace {

Q_LOGGING_CATEGORY(log, "tamber.storage")

constexpr int flushInterval = 50;   // milliseconds between two writes of the file
constexpr int retryInterval = 2000; // milliseconds until a failed write is tried again

QStringList knownGroups()
{
    QStringList groups;
    for (const char *group : {"Panel", "Interface", "Misc", "Update", "LineOutSettings", "Master"})
        groups += QLatin1String(group);
    for (int track = 1; track <= 16; ++track)
        groups += QStringLiteral("Track%1").arg(track);
    for (int left = 1; left < 16; left += 2)
        groups += QStringLiteral("Track%1_%2").arg(left).arg(left + 1);
    return groups;
}

bool holdsKnownGroup(const Values &values)
{
    static const QStringList known = knownGroups();
    const QStringList keys = values.keys();
    return std::any_of(keys.begin(), keys.end(), [](const QString &key) {
        return known.contains(key.section(QLatin1Char('/'), 0, -2));
    });
}

/// A name for a copy that is read. None comes twice, so that no cache of the store can answer.
QString nameToReadFrom(const QString &fileName)
{
    static int count = 0;
    return freshName(fileName) + QString::number(++count);
}

bool isAmong(const QStringList &kept, const QString &key)
{
    return std::any_of(kept.begin(), kept.end(), [&](const QString &entry) {
        return entry.endsWith(QLatin1Char('/')) ? key.startsWith(entry) : key == entry;
    });
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
    removeLeftovers(m_fileName);
    m_stamp = stampOfFile();
    switch (readValues(m_fileName, m_values)) {
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
    const bool written = writeValues(m_fileName, m_values);
    if (written) m_stamp = stampOfFile();
    m_sinceFlush.start();
    m_changed = !written;
    noteResult(written);
}

void Settings::noteResult(bool written)
{
    if (!written && !m_failing)
        qCWarning(log) << "the settings file cannot be written:" << m_fileName;
    if (written && m_failing) qCInfo(log) << "the settings file is written again:" << m_fileName;
    m_failing = !written;
    if (m_failing) m_timer.start(retryInterval);
}

/// The file, too, may have been changed by somebody else.
bool Settings::bringFileUpToDate()
{
    if (!m_values.isEmpty() && !(stampOfFile() == m_stamp)) m_changed = true;
    flush();
    return !m_changed;
}

bool Settings::copyTo(const QString &fileName)
{
    if (bringFileUpToDate() && copyWhole(m_fileName, fileName)) return true;
    qCWarning(log) << "the settings file cannot be copied to" << fileName;
    return false;
}

bool Settings::isUsable(const QString &fileName)
{
    Values values;
    readValues(fileName, values);
    return holdsKnownGroup(values);
}

bool Settings::takeFrom(const QString &fileName, const QStringList &kept)
{
    const QString copy = nameToReadFrom(m_fileName);
    const bool copied = makeCopy(fileName, copy);
    Values taken;
    const FileHealth health = readValues(copied ? copy : fileName, taken);
    const bool usable = holdsKnownGroup(taken);
    if (usable) {
        bringFileUpToDate();
        m_values = merged(taken, kept);
        const bool whole = copied && health == FileHealth::Good && m_values == taken;
        m_changed = !whole || !replaceFile(m_fileName, copy);
        if (!m_changed) m_stamp = stampOfFile();
        flush();
    }
    QFile::remove(copy);
    return usable;
}

/// Those of another file, but for what is kept.
Values Settings::merged(Values taken, const QStringList &kept) const
{
    for (auto value = taken.begin(); value != taken.end();)
        value = isAmong(kept, value.key()) ? taken.erase(value) : std::next(value);
    for (auto value = m_values.begin(); value != m_values.end(); ++value)
        if (isAmong(kept, value.key())) taken.insert(value.key(), value.value());
    return taken;
}

void Settings::clear()
{
    m_timer.stop();
    m_values.clear();
    m_changed = false;
    if (QFileInfo::exists(m_fileName) && !QFile::remove(m_fileName))
        qCWarning(log) << "the settings file cannot be deleted:" << m_fileName;
    m_stamp = stampOfFile();
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
