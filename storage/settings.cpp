#include "storage/settings.h"

#include "storage/filehealth.h"
#include "storage/inicodec.h"

#include <QDateTime>
#include <QEvent>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QVariant>

using namespace storage;

namespace {

Q_LOGGING_CATEGORY(log, "tamber.storage")

constexpr int flushInterval = 50;   // milliseconds between two writes of the file
constexpr int retryInterval = 2000; // milliseconds until a failed write is tried again

struct FileStamp
{
    QDateTime modified;
    qint64 size;
    bool operator==(const FileStamp &o) const { return modified == o.modified && size == o.size; }
};

FileStamp stampOf(const QString &fileName)
{
    const QFileInfo info(fileName);
    return {info.lastModified(), info.size()};
}

} // namespace

Settings::Store::Store(Settings &owner, const QString &organisation, const QString &application)
    : QSettings(QSettings::IniFormat, QSettings::UserScope, organisation, application),
      m_owner(owner)
{
    static auto *const codec = new IniCodec;
    setIniCodec(codec);
    setFallbacksEnabled(false);
}

/// QSettings sends itself this event at the first change, to write when the event loop is reached.
bool Settings::Store::event(QEvent *event)
{
    if (event->type() != QEvent::UpdateRequest) return QSettings::event(event);
    m_owner.flushSoon();
    return true;
}

Settings::Settings(const char *organisation, const char *application)
    : m_store(*this, QLatin1String(organisation), QLatin1String(application))
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
    FileHealth health = inspect(fileName());
    // Reading any key makes the store parse the whole file, and find out what it cannot read.
    const bool hasKeys = !m_store.allKeys().isEmpty();
    if (health == FileHealth::Good && m_store.status() == QSettings::FormatError)
        health = FileHealth::Damaged;
    if (health != FileHealth::Missing && !hasKeys) health = FileHealth::Unreadable;

    switch (health) {
    case FileHealth::Good:
        return;
    case FileHealth::Missing:
        qCInfo(log) << "no settings yet, starting with the defaults:" << fileName();
        return;
    case FileHealth::Damaged:
        qCWarning(log) << "the settings file is damaged, what is missing takes its default:"
                       << fileName();
        break;
    case FileHealth::Unreadable:
        qCWarning(log) << "the settings file cannot be read, starting with the defaults:"
                       << fileName();
        m_ignoresFile = true;
        break;
    }
    keepCopy(fileName());
}

void Settings::flushSoon()
{
    const qint64 since = m_sinceFlush.isValid() ? m_sinceFlush.elapsed() : flushInterval;
    if (since >= flushInterval)
        flush();
    else if (!m_timer.isActive())
        m_timer.start(flushInterval - static_cast<int>(since));
}

void Settings::flush()
{
    m_timer.stop();
    if (!m_changed) return;
    const FileStamp before = stampOf(fileName());
    const bool hadError = m_store.status() != QSettings::NoError;
    m_store.sync();
    // The store never forgets an error, so after one only the file tells.
    const bool written =
        hadError ? !(stampOf(fileName()) == before) : m_store.status() == QSettings::NoError;
    m_sinceFlush.start();
    m_changed = !written;
    noteResult(written);
}

void Settings::noteResult(bool written)
{
    if (!written && !m_failing)
        qCWarning(log) << "the settings file cannot be written:" << fileName();
    if (written && m_failing) qCInfo(log) << "the settings file is written again:" << fileName();
    m_failing = !written;
    if (m_failing) m_timer.start(retryInterval);
}

QVariant Settings::value(const QString &group, const char *key, const QVariant &missing) const
{
    if (m_ignoresFile) return missing;
    return m_store.value(group + QLatin1Char('/') + QLatin1String(key), missing);
}

int Settings::integer(const QString &group, const char *key) const
{
    bool isNumber = false;
    // By way of the text: a number that is too large for an integer is none.
    const int number = value(group, key, missingInteger).toString().toInt(&isNumber);
    return isNumber ? number : missingInteger;
}

void Settings::setValue(const QString &group, const char *key, const QVariant &value)
{
    if (m_ignoresFile) {
        m_ignoresFile = false;
        m_store.clear();
    }
    m_changed = true;
    m_store.setValue(group + QLatin1Char('/') + QLatin1String(key), value);
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
    return value(group, key.key, QString()).toString();
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
    return value(QLatin1String(setting.group), setting.key, QString()).toString();
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
