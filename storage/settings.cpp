#include "storage/settings.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <algorithm>
#include <utility>

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
    : m_disk(disk), m_fileName(pathOf(organisation, application)), m_holds(content),
      m_writer(disk, m_fileName)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &Settings::startWriting);
    connect(&m_writer, &FileWriter::finished, this, &Settings::noteResult);
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
    startRetries();
}

void Settings::startRetries()
{
    // Without an application object a timer would never time out, but count as active.
    if (m_reading == Reading::Retrying && QCoreApplication::instance()) m_readTimer.start();
}

/// Reads the file. Returns false if it exists but is unreadable. Values that were set before the
/// file became readable are newer than the file and stay.
bool Settings::tryReading()
{
    m_writer.noteRead();
    const FileContent file = readFile(m_disk, m_fileName);
    if (file.health == FileHealth::Missing) {
        qCInfo(log) << "no settings yet, starting with the defaults:" << m_fileName;
    } else if (!isUsable(Values(file.entries))) {
        return false;
    } else if (file.health == FileHealth::Damaged) {
        qCWarning(log) << "the settings file is damaged; defaults replace what is missing:"
                       << m_fileName;
        keepCopy(m_disk, m_fileName, KeptAs::Damaged);
        m_isDamaged = true;
    }
    const Entries early = values().entries();
    Entries all = file.entries;
    for (auto entry = early.begin(); entry != early.end(); ++entry)
        all.insert(entry.key(), entry.value());
    m_content = early.isEmpty() ? file.bytes : QByteArray();
    m_store.load(Values(all));
    m_reading = Reading::Done;
    return true;
}

void Settings::retryReading()
{
    if (tryReading()) {
        m_readTimer.stop();
        qCInfo(log) << "the settings file could be read after a retry:" << m_fileName;
        startTimer();
        emit replaced();
        emit troubleChanged();
    } else if (m_sinceOpen.hasExpired(readTimeout)) {
        qCWarning(log) << "the settings file cannot be read; the defaults apply:" << m_fileName;
        if (m_holds == Content::Panel)
            setReading(Reading::Failed);
        else
            acceptValues();
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
    startTimer();
    emit replaced();
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
    startTimer();
}

void Settings::startTimer()
{
    if (!isWriteDue() || m_timer.isActive()) return;
    if (m_writer.isBusy()) return; // or later, when its result is known
    const qint64 since = m_sinceFlush.isValid() ? m_sinceFlush.elapsed() : flushInterval;
    m_timer.start(static_cast<int>(qMax<qint64>(flushInterval - since, 0)));
}

void Settings::startWriting()
{
    if (isWriteDue()) m_writer.start(takeJob());
}

void Settings::flush()
{
    m_writer.finish();
    m_timer.stop();
    if (isWriteDue()) noteResult(m_writer.write(takeJob()));
}

FileWriter::Job Settings::takeJob()
{
    m_sinceFlush.start();
    m_changed = false;
    return {m_content.isNull() ? values() : Values(), m_content, std::exchange(m_unread, false)};
}

void Settings::noteResult(const FileWriter::Result &result)
{
    const bool changed = m_failing == result.isWritten;
    m_failing = !result.isWritten;
    m_unread = m_unread || result.isUnread;
    if (m_failing) {
        m_changed = true;
        m_timer.start(retryInterval);
    } else {
        startTimer(); // for what has changed since
    }
    if (result.isForeignReplaced) emit foreignChangeReplaced();
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
