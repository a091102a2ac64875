#pragma once

#include "storage/keys.h"
#include "storage/wholefile.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QString>
#include <QStringList>
#include <QTimer>

/// The live settings file: the whole state of the panel, one INI file per user. The only place
/// that knows its groups and keys. GUI thread only; it may be made before the application object.
///
/// The file is read once; from then on the state of the session is what this object holds, whatever
/// happens to the file meanwhile. Writing is write-through: a change is on disk as soon as the
/// event loop is reached, or 50 ms after the previous write where that is later, so that a drag
/// costs twenty writes a second. The file is replaced whole, never written in place.
///
/// A file that cannot be read is not touched until something is written: reads answer the defaults,
/// the log says so, and a copy of the file is kept beside it. Of a file that is damaged in places
/// the rest is read, and a copy is kept as well; so it is of a file that somebody else has put in
/// place of the one that was read or written last.
class Settings
{
public:
    /// Opens the file of this organisation and application in the user's settings folder.
    Settings(const char *organisation, const char *application);
    ~Settings();
    Settings(const Settings &) = delete;
    Settings &operator=(const Settings &) = delete;

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

    /// Writes what has changed to disk now. A failure is logged once, and the write is tried again
    /// until it succeeds.
    void flush();

    /// Whether nothing is stored, so that there may be no file.
    bool isEmpty() const { return m_values.isEmpty(); }

    QString fileName() const { return m_fileName; }

    /// @name The file as a whole
    /// What has changed is written before; failures are logged.
    ///@{

    /// Copies the file byte for byte to another path.
    /// @return false when it could not; what was at that path is still there
    bool copyTo(const QString &fileName);

    /// Whether a file is one of the panel's settings: there, readable, and with a group that the
    /// panel knows.
    static bool isUsable(const QString &fileName);

    /// Takes over the values of another file, byte for byte where nothing is kept from before that
    /// differs. When the disk refuses, the values are those of the other file all the same, and the
    /// write is tried again until it succeeds.
    /// @param kept what stays as it is now, a missing key missing: as "group/key", or "group/" for
    ///        all of a group
    /// @return false when the other file is not usable; nothing has changed then
    bool takeFrom(const QString &fileName, const QStringList &kept);

    /// Forgets all values and deletes the file. What is written afterwards makes a new one.
    void clear();
    ///@}

private:
    struct Stamp
    {
        QDateTime modified;
        qint64 size = -1;
        bool operator==(const Stamp &o) const { return modified == o.modified && size == o.size; }
    };

    void open();
    Stamp stampOfFile() const;
    bool bringFileUpToDate();
    storage::Values merged(storage::Values taken, const QStringList &kept) const;
    void noteResult(bool written);
    QVariant value(const QString &group, const char *key, const QVariant &missing) const;
    int integer(const QString &group, const char *key) const;
    QString text(const QString &group, const char *key) const;
    void setValue(const QString &group, const char *key, const QVariant &value);

    const QString m_fileName;
    storage::Values m_values;
    Stamp m_stamp; ///< of the file as it was read or written last
    QTimer m_timer;
    QElapsedTimer m_sinceFlush;
    bool m_changed = false; ///< something is not on disk yet
    bool m_failing = false; ///< the last write did not succeed
};
