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
constexpr int readTimeout = 5000;   // until the file counts as unreadable

} // namespace

Settings::Settings(const char *organisation, const char *application, Disk &disk, Content content)
    : m_disk(disk), m_fileName(pathOf(organisation, application)), m_holds(content)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &Settings::flush);
    m_readTimer.setInterval(readInterval);
    connect(&m_readTimer, &QTimer::timeout, this, &Settings::retryReading);
    connect(&m_store, &Store::committed, this, &Settings::noteChanges);
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

/// Reads the file. Returns false if it exists but is unreadable. Values that were set before the
/// file became readable are newer than the file and stay.
bool Settings::tryReading()
{
    const Stamp stamp = stampOfFile();
    const FileContent file = readFile(m_disk, m_fileName);
    if (file.health == FileHealth::Missing) {
        qCInfo(log) << "no settings yet, starting with the defaults:" << m_fileName;
    } else if (!isUsable(Values(file.entries))) {
        return false;
    } else if (file.health == FileHealth::Damaged) {
        qCWarning(log) << "the settings file is damaged; defaults replace what is missing:"
                       << m_fileName;
        keepCopy(m_disk, m_fileName, KeptAs::Damaged);
    }
    const Entries early = values().entries();
    Entries all = file.entries;
    for (auto entry = early.begin(); entry != early.end(); ++entry)
        all.insert(entry.key(), entry.value());
    m_content = early.isEmpty() ? file.bytes : QByteArray();
    m_store.load(Values(all));
    m_stamp = stamp;
    m_reading = Reading::Done;
    return true;
}

void Settings::retryReading()
{
    if (tryReading()) {
        m_readTimer.stop();
        qCInfo(log) << "the settings file could be read after a retry:" << m_fileName;
        if (m_changed) startTimer();
        emit replaced();
        emit troubleChanged();
    } else if (m_sinceOpen.hasExpired(readTimeout)) {
        qCWarning(log) << "the settings file cannot be read; the defaults apply:" << m_fileName;
        m_unread = true;
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

void Settings::acceptValues()
{
    if (m_reading == Reading::Done) return;
    m_unread = true;
    setReading(Reading::Done);
    if (m_changed) startTimer();
    emit replaced();
}

Settings::Stamp Settings::stampOfFile() const
{
    const QFileInfo info(m_fileName);
    return info.isFile() ? Stamp{info.lastModified(), info.size()} : Stamp();
}

bool Settings::isUsable(const Values &values) const
{
    if (m_holds == Content::Panel) return values.hasGroup();
    return values.hasGroup(sceneMemoryGroup, sceneMemoryGroup);
}

void Settings::noteChanges(const ChangeSet &changes)
{
    const bool inFile =
        !changes.foreign.empty() ||
        std::any_of(changes.changes.begin(), changes.changes.end(), [](const Change &change) {
            return !isOfTheSession(change.key);
        });
    if (!inFile) return;
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

void Settings::flush()
{
    m_timer.stop();
    if (!m_changed || m_reading == Reading::Retrying) return;
    keepReplacedFile();
    const bool written = writeFile();
    if (written) m_stamp = stampOfFile();
    m_sinceFlush.start();
    m_changed = !written;
    noteResult(written);
}

/// Keeps a copy of the file if the file has content that the store does not have.
void Settings::keepReplacedFile()
{
    const Stamp found = stampOfFile();
    if (m_unread) {
        m_unread = false;
        m_stamp = found;
        keepCopy(m_disk, m_fileName, KeptAs::Unreadable);
        return;
    }
    if (found.size <= 0 || found == m_stamp) return;
    qCWarning(log) << "another program has changed the settings file; it will be replaced:"
                   << m_fileName;
    keepCopy(m_disk, m_fileName, KeptAs::Foreign);
    m_stamp = found;
    emit foreignChangeReplaced();
}

bool Settings::writeFile()
{
    const QByteArray bytes = content();
    return bytes.isEmpty() ? m_disk.remove(m_fileName) : replaceFile(m_disk, m_fileName, bytes);
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
        qCInfo(log) << "the settings file can be written again:" << m_fileName;
    emit troubleChanged();
}

QByteArray Settings::content()
{
    if (m_content.isNull()) m_content = toIni(values().entries());
    return m_content;
}

void Settings::adoptContent(const FileContent &file)
{
    if (file.health != FileHealth::Good || file.entries != values().entries()) return;
    m_content = file.bytes;
    m_changed = true;
    startTimer();
}
