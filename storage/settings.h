#pragma once

#include "storage/keys.h"
#include "storage/wholefile.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

/// The live settings file: the whole state of the panel, one INI file per user. The only place
/// that knows its groups and keys. GUI thread only; it may be made before the application object.
///
/// The file is read once; from then on the state of the session is what this object holds, whatever
/// happens to the file meanwhile. Writing is write-through: a change is on disk as soon as the
/// event loop is reached, or 50 ms after the previous write where that is later, so that a drag
/// costs twenty writes a second. The file is replaced whole, never written in place. A write that
/// fails leaves the old file as it was, and is tried again every 2 s.
///
/// Of a damaged file everything readable is used, and a copy is kept beside it. While a file that
/// exists cannot be read, or nothing in it can, reading is tried again for 5 s. Nothing is written
/// in this time: what is set is added to the file's values when it can be read. Afterwards the
/// defaults hold, and the file is moved aside before the first write.
class Settings : public QObject
{
    Q_OBJECT

public:
    /// Opens the file of this organisation and application in the user's settings folder.
    /// @param groups those that the file may hold; a file with none of them counts as unreadable
    Settings(
        const char *organisation, const char *application,
        storage::Disk &disk = storage::realDisk(), const QStringList &groups = panelGroups());
    ~Settings() override;

    /// The groups of the panel's own settings.
    static QStringList panelGroups();

    /// @name Values of a strip; the group is the strip's key
    /// A missing key, or an integer that is no number, reads as its default: 157, false or "".
    ///@{
    int read(const QString &group, storage::IntegerKey key) const;
    bool read(const QString &group, storage::SwitchKey key) const;
    QString read(const QString &group, storage::TextKey key) const;
    void write(const QString &group, storage::IntegerKey key, int value);
    void write(const QString &group, storage::SwitchKey key, bool value);
    void write(const QString &group, storage::TextKey key, const QString &value);
    void write(
        const QString &group, const storage::PositionKeys &keys, int position, const QString &text);
    ///@}

    /// @name Values outside the strips
    ///@{
    int read(const storage::IntegerSetting &setting) const;
    bool read(const storage::SwitchSetting &setting) const;
    QString read(const storage::TextSetting &setting) const;
    void write(const storage::IntegerSetting &setting, int value);
    void write(const storage::SwitchSetting &setting, bool value);
    void write(const storage::TextSetting &setting, const QString &value);
    ///@}

    /// Writes what has changed to disk now. A failure is logged once.
    void flush();

    /// Whether nothing is stored.
    bool isEmpty() const { return m_values.isEmpty(); }

    QString fileName() const { return m_fileName; }

    /// @name Trouble with the file
    ///@{

    enum class Reading {
        Done,
        Retrying, ///< a file that exists cannot be read; it is tried again
        Failed,   ///< it could not be read for 5 s; the defaults hold
    };
    Reading reading() const { return m_reading; }
    /// Takes the defaults for good after reading has failed.
    void acceptDefaults();

    /// Whether the last write failed.
    bool isWriteFailing() const { return m_failing; }
    ///@}

    /// @name The file as a whole
    ///@{

    /// Copies the state to another file, byte for byte as the live file holds it.
    /// @return false if that fails, which is logged; what was at that path is still there
    bool copyTo(const QString &fileName);

    /// Whether a file is one of the panel's settings: there, readable, and with a group that the
    /// panel knows.
    bool isUsable(const QString &fileName) const;

    /// Replaces all values by those of another file, except the kept ones. If no kept value
    /// differs, the live file becomes a byte copy. If the disk refuses, the values are taken all
    /// the same, and the write is tried again until it succeeds.
    /// @param kept what stays as it is now, a missing key missing: as "group/key", or "group/" for
    ///        all of a group
    /// @return false if the other file is not usable; nothing has changed then
    bool takeFrom(const QString &fileName, const QStringList &kept);

    /// Forgets all values. The next flush replaces the file by one with what is written afterwards,
    /// or deletes it if that is nothing.
    void clear();
    ///@}

signals:
    /// All values may have changed without having been written: the file could be read at last, or
    /// the defaults were accepted.
    void replaced();
    /// reading() or isWriteFailing() has changed.
    void troubleChanged();
    /// Somebody else had changed the file, which is now replaced; a copy is kept beside it.
    void foreignChangeReplaced();

private:
    struct Stamp
    {
        QDateTime modified;
        qint64 size = -1;
        bool operator==(const Stamp &o) const { return modified == o.modified && size == o.size; }
    };

    void open();
    bool tryReading();
    void retryReading();
    void setReading(Reading reading);
    Stamp stampOfFile() const;
    bool holdsKnownGroup(const storage::Values &values) const;
    storage::Values merged(storage::Values taken, const QStringList &kept) const;
    void makeRoom();
    bool writeFile();
    void noteResult(bool written);
    QByteArray value(const QString &group, const char *key) const;
    int integer(const QString &group, const char *key) const;
    bool isOn(const QString &group, const char *key, bool missing) const;
    QString text(const QString &group, const char *key) const;
    void setValue(const QString &group, const char *key, const QByteArray &value);
    void startTimer();

    storage::Disk &m_disk;
    const QString m_fileName;
    const QStringList m_groups;
    storage::Values m_values;
    QByteArray m_content; ///< of the file as it is, or is to be; null if the values have changed
    Stamp m_stamp;        ///< of the file as it was read or written last
    QTimer m_timer;
    QTimer m_readTimer;
    QElapsedTimer m_sinceOpen;
    QElapsedTimer m_sinceFlush;
    Reading m_reading = Reading::Done;
    bool m_aside = false;   ///< the file could not be read and is to be moved aside
    bool m_changed = false; ///< something is not on disk yet
    bool m_failing = false;
};
