#include "storage/settings.h"

#include <QFileInfo>
#include <QLoggingCategory>

#include <algorithm>

using namespace storage;

namespace {

Q_LOGGING_CATEGORY(log, "tamber.storage")

// All in milliseconds.
constexpr int flushInterval = 50;   // between two writes of the file
constexpr int retryInterval = 2000; // until a failed write is tried again
constexpr int readInterval = 250;   // until a failed read is tried again
constexpr int readPatience = 5000;  // how long it is

QByteArray entryOf(const QString &group, const char *key)
{
    return group.toLatin1() + '/' + key;
}

bool isAmong(const QStringList &kept, const QByteArray &entry)
{
    return std::any_of(kept.begin(), kept.end(), [&](const QString &each) {
        const QByteArray name = each.toLatin1();
        return name.endsWith('/') ? entry.startsWith(name) : entry == name;
    });
}

} // namespace

QStringList Settings::panelGroups()
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

Settings::Settings(
    const char *organisation, const char *application, Disk &disk, const QStringList &groups)
    : m_disk(disk), m_fileName(pathOf(organisation, application)), m_groups(groups)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &Settings::flush);
    m_readTimer.setInterval(readInterval);
    connect(&m_readTimer, &QTimer::timeout, this, &Settings::retryReading);
    open();
}

Settings::~Settings()
{
    m_timer.stop();
    if (m_reading == Reading::Retrying) tryReading();
    flush();
}

void Settings::open()
{
    removeLeftovers(m_disk, m_fileName);
    if (tryReading()) return;
    qCWarning(log) << "the settings file cannot be read, trying again:" << m_fileName;
    m_reading = Reading::Retrying;
    m_sinceOpen.start();
    m_readTimer.start();
}

/// What was set before the file could be read is newer than the file.
bool Settings::tryReading()
{
    const Stamp stamp = stampOfFile();
    FileContent file = readFile(m_disk, m_fileName);
    if (file.health == FileHealth::Missing) {
        qCInfo(log) << "no settings yet, starting with the defaults:" << m_fileName;
    } else if (!holdsKnownGroup(file.values)) {
        return false;
    } else if (file.health == FileHealth::Damaged) {
        qCWarning(log) << "the settings file is damaged, what is missing takes its default:"
                       << m_fileName;
        keepCopy(m_disk, m_fileName, KeptAs::Damaged);
    }
    for (auto value = m_values.begin(); value != m_values.end(); ++value)
        file.values.insert(value.key(), value.value());
    if (m_values.isEmpty()) m_content = file.bytes;
    m_values = file.values;
    m_stamp = stamp;
    m_reading = Reading::Done;
    return true;
}

void Settings::retryReading()
{
    if (tryReading()) {
        m_readTimer.stop();
        qCInfo(log) << "the settings file could be read at last:" << m_fileName;
        if (m_changed) startTimer();
        emit replaced();
        emit troubleChanged();
    } else if (m_sinceOpen.hasExpired(readPatience)) {
        qCWarning(log) << "the settings file cannot be read, the defaults hold:" << m_fileName;
        m_aside = true;
        setReading(Reading::Failed);
        if (m_changed) startTimer();
    }
}

void Settings::setReading(Reading reading)
{
    m_readTimer.stop();
    if (reading == m_reading) return;
    m_reading = reading;
    emit troubleChanged();
}

void Settings::acceptDefaults()
{
    if (m_reading != Reading::Failed) return;
    setReading(Reading::Done);
    emit replaced();
}

Settings::Stamp Settings::stampOfFile() const
{
    const QFileInfo info(m_fileName);
    return info.isFile() ? Stamp{info.lastModified(), info.size()} : Stamp();
}

bool Settings::holdsKnownGroup(const Values &values) const
{
    const QList<QByteArray> entries = values.keys();
    return std::any_of(entries.begin(), entries.end(), [this](const QByteArray &entry) {
        return m_groups.contains(QString::fromUtf8(entry.left(entry.indexOf('/'))));
    });
}

void Settings::flush()
{
    m_timer.stop();
    if (!m_changed || m_reading == Reading::Retrying) return;
    makeRoom();
    const bool written = writeFile();
    if (written) m_stamp = stampOfFile();
    m_sinceFlush.start();
    m_changed = !written;
    noteResult(written);
}

/// Sees to it that no content is lost that only the file holds.
void Settings::makeRoom()
{
    if (m_aside) {
        m_aside = false;
        m_stamp = stampOfFile();
        keepCopy(m_disk, m_fileName, KeptAs::Unreadable);
        return;
    }
    const Stamp found = stampOfFile();
    if (found.size <= 0 || found == m_stamp) return;
    qCWarning(log) << "somebody else has changed the settings file, which is replaced:"
                   << m_fileName;
    keepCopy(m_disk, m_fileName, KeptAs::Foreign);
    m_stamp = found;
    emit foreignChangeReplaced();
}

bool Settings::writeFile()
{
    if (m_values.isEmpty()) return m_disk.remove(m_fileName);
    if (m_content.isNull()) m_content = toIni(m_values);
    return replaceFile(m_disk, m_fileName, m_content);
}

void Settings::noteResult(bool written)
{
    const bool changed = m_failing == written;
    m_failing = !written;
    if (m_failing) m_timer.start(retryInterval);
    if (!changed) return;
    if (m_failing)
        qCWarning(log) << "the settings file cannot be written:" << m_fileName;
    else
        qCInfo(log) << "the settings file is written again:" << m_fileName;
    emit troubleChanged();
}

bool Settings::copyTo(const QString &fileName)
{
    flush();
    if (m_content.isNull()) m_content = toIni(m_values);
    if (replaceFile(m_disk, fileName, m_content)) return true;
    qCWarning(log) << "the settings file cannot be copied to" << fileName;
    return false;
}

bool Settings::isUsable(const QString &fileName) const
{
    return holdsKnownGroup(readFile(m_disk, fileName).values);
}

bool Settings::takeFrom(const QString &fileName, const QStringList &kept)
{
    const FileContent other = readFile(m_disk, fileName);
    if (!holdsKnownGroup(other.values)) return false;
    m_aside = m_aside || m_reading == Reading::Retrying;
    m_values = merged(other.values, kept);
    m_content = m_values == other.values ? other.bytes : QByteArray();
    m_changed = true;
    setReading(Reading::Done);
    flush();
    return true;
}

/// Those of another file, except the kept ones.
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
    m_aside = m_aside || m_reading == Reading::Retrying;
    m_values.clear();
    m_content = QByteArray();
    m_changed = true;
    setReading(Reading::Done);
    startTimer();
}

QByteArray Settings::value(const QString &group, const char *key) const
{
    return m_values.value(entryOf(group, key));
}

int Settings::integer(const QString &group, const char *key) const
{
    bool isNumber = false;
    const int number = text(group, key).toInt(&isNumber);
    return isNumber ? number : missingInteger;
}

/// As Qt's settings read a switch: a text is on, unless it says otherwise.
bool Settings::isOn(const QString &group, const char *key, bool missing) const
{
    const QByteArray stored = value(group, key);
    const std::optional<QString> word = stored.isNull() ? std::nullopt : decodeText(stored);
    if (!word) return missing;
    const QString lower = word->toLower();
    return !lower.isEmpty() && lower != QLatin1String("0") && lower != QLatin1String("false");
}

QString Settings::text(const QString &group, const char *key) const
{
    return decodeText(value(group, key)).value_or(QString());
}

void Settings::setValue(const QString &group, const char *key, const QByteArray &value)
{
    m_values.insert(entryOf(group, key), value.isNull() ? QByteArray("") : value);
    m_content = QByteArray();
    m_changed = true;
    if (m_reading != Reading::Retrying) startTimer();
}

void Settings::startTimer()
{
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
    return isOn(group, key.key, false);
}

QString Settings::read(const QString &group, TextKey key) const
{
    return text(group, key.key);
}

void Settings::write(const QString &group, IntegerKey key, int value)
{
    setValue(group, key.key, QByteArray::number(value));
}

void Settings::write(const QString &group, SwitchKey key, bool value)
{
    setValue(group, key.key, value ? "true" : "false");
}

void Settings::write(const QString &group, TextKey key, const QString &value)
{
    setValue(group, key.key, encodeText(value));
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
    return isOn(QLatin1String(setting.group), setting.key, setting.missing);
}

QString Settings::read(const TextSetting &setting) const
{
    return text(QLatin1String(setting.group), setting.key);
}

void Settings::write(const IntegerSetting &setting, int value)
{
    write(QLatin1String(setting.group), IntegerKey{setting.key}, value);
}

void Settings::write(const SwitchSetting &setting, bool value)
{
    write(QLatin1String(setting.group), SwitchKey{setting.key}, value);
}

void Settings::write(const TextSetting &setting, const QString &value)
{
    write(QLatin1String(setting.group), TextKey{setting.key}, value);
}
