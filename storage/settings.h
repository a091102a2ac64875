#pragma once

#include "storage/store.h"
#include "storage/wholefile.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QTimer>

/// A settings file: the state of the panel, one INI file per user. GUI thread only; it may be made
/// before the application object.
///
/// The file is read once; from then on the state of the session is what the store holds, whatever
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
    /// What a file is to hold. One without any of its groups counts as unreadable.
    enum class Content {
        Panel,
        SceneNames,
    };

    /// Opens the file of this organisation and application in the user's settings folder.
    Settings(
        const char *organisation, const char *application,
        storage::Disk &disk = storage::realDisk(), Content content = Content::Panel);
    ~Settings() override;

    /// The state, which is changed by transactions.
    storage::Store &store() { return m_store; }
    const storage::Values &values() const { return m_store.values(); }

    /// Changes one setting that undo does not know.
    template <typename TypedKey, typename Value>
    void write(const storage::Setting<TypedKey> &setting, const Value &value)
    {
        storage::Transaction transaction(m_store);
        transaction.write(setting, value);
        transaction.commit();
    }
    template <typename TypedKey>
    auto read(const storage::Setting<TypedKey> &setting) const
    {
        return values().read(setting);
    }

    /// Writes what has changed to disk now. A failure is logged once.
    void flush();

    QString fileName() const { return m_fileName; }

    /// @name Trouble with the file
    ///@{

    enum class Reading {
        Done,
        Retrying, ///< a file that exists cannot be read; it is tried again
        Failed,   ///< it could not be read for 5 s; the defaults hold
    };
    Reading reading() const { return m_reading; }
    /// Ends Retrying or Failed: the values are good as they are now.
    void acceptValues();

    /// Whether the last write failed.
    bool isWriteFailing() const { return m_failing; }
    ///@}

    /// The bytes of the file as it is, or is to be after the next flush.
    QByteArray content();

    /// Says that a file with these bytes holds the values that the store holds now. If it does, it
    /// is written as it stands.
    void adoptContent(const storage::FileContent &file);

signals:
    /// The file could be read at last, or the values were accepted: they have not changed by a
    /// transaction.
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
    bool isUsable(const storage::Values &values) const;
    void noteChanges(const storage::ChangeSet &changes);
    void makeRoom();
    bool writeFile();
    void noteResult(bool written);
    void startTimer();

    storage::Disk &m_disk;
    const QString m_fileName;
    const Content m_holds;
    storage::Store m_store;
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
