#pragma once

#include "storage/filewriter.h"
#include "storage/store.h"

#include <QElapsedTimer>
#include <QTimer>

/// A settings file: the state of the panel in one INI file per user. GUI thread only. The object
/// may be constructed before the application object; then startRetries() must follow.
///
/// The file is read once. From then on the store holds the state, even if another program changes
/// the file. A change is written when the event loop is reached, or 50 ms after the previous write
/// if that is later. So a drag causes at most twenty writes a second. They happen on a thread of
/// their own, from a copy of the values. The file is always replaced as a whole, never changed in
/// place. A write that fails leaves the old file unchanged and is retried every 2 s.
///
/// Every readable value of a damaged file is used, and a copy of the file is kept beside it. If a
/// file exists but is unreadable, reading is retried for 5 s. Nothing is written during this time,
/// and values that are set meanwhile override those of the file. If the file is still unreadable
/// after 5 s, the defaults apply, but nothing is written before acceptValues(): a file of defaults
/// would open muted channels at the next start. A copy of the unreadable file is kept before the
/// first write; without a copy it is not replaced. Names of scenes are accepted without asking.
class Settings : public QObject
{
    Q_OBJECT

public:
    /// The groups that a file must contain. A file without any of them counts as unreadable.
    enum class Content {
        Panel,
        SceneNames,
    };

    /// Reads the file of this organisation and application in the user's settings folder.
    Settings(
        const char *organisation, const char *application,
        storage::Disk &disk = storage::realDisk(), Content content = Content::Panel);
    /// Writes what has changed.
    ~Settings() override;

    /// Starts the retries of a read that has failed. They need the event loop of an application
    /// object; the constructor starts them if there is one.
    void startRetries();

    /// The state. Only transactions change it.
    storage::Store &store() { return m_store; }
    const storage::Values &values() const { return m_store.values(); }

    /// Changes one setting in a transaction that cannot be undone.
    template <typename TypedKey, typename Value>
    void write(const storage::Setting<TypedKey> &setting, const Value &value)
    {
        storage::Transaction transaction(m_store);
        transaction.write(setting, value);
        transaction.commit();
    }
    /// Returns the value of one setting, or its default if it is missing.
    template <typename TypedKey>
    auto read(const storage::Setting<TypedKey> &setting) const
    {
        return values().read(setting);
    }

    /// Writes what has changed now instead of later, and waits until it is on disk. Only the first
    /// of several failures is logged.
    void flush();

    /// Returns the absolute path of the file.
    QString fileName() const { return m_fileName; }

    /// @name Errors of the file
    ///@{

    /// The result of reading the file.
    enum class Reading {
        Done,
        Retrying, ///< the file exists but is unreadable; reading is retried
        Failed,   ///< the file was unreadable for 5 s; the defaults apply, but are not written
    };
    Reading reading() const { return m_reading; }
    /// Returns whether a part of the file could not be read. Defaults replace what is missing.
    bool isDamaged() const { return m_isDamaged; }
    /// Declares the current values valid. Ends Retrying or Failed.
    void acceptValues();

    /// Returns whether the file is being written in the background.
    bool isWriting() const { return m_writer.isBusy(); }
    /// Returns whether the last write failed.
    bool isWriteFailing() const { return m_failing; }
    ///@}

    /// Returns the bytes of the file as they are on disk after the next flush.
    QByteArray content();

    /// Makes the next flush write the bytes of `file` unchanged. Has no effect unless the entries
    /// of `file` are those of the store.
    void adoptContent(const storage::FileContent &file);

signals:
    /// The file was read after a retry, or acceptValues() was called. The values may all have
    /// changed, without a transaction.
    void replaced();
    /// reading() or isWriteFailing() has changed.
    void troubleChanged();
    /// Another program had changed the file. The file is being replaced, and a copy is kept.
    void foreignChangeReplaced();

private:
    void open();
    bool tryReading();
    void retryReading();
    void setReading(Reading reading);
    bool isUsable(const storage::Values &values) const;
    void noteChanges(const storage::ChangeSet &changes);
    bool isWriteDue() const { return m_changed && m_reading == Reading::Done; }
    void startWriting();
    storage::FileWriter::Job takeJob();
    void noteResult(const storage::FileWriter::Result &result);
    void startTimer();

    storage::Disk &m_disk;
    const QString m_fileName;
    const Content m_holds;
    storage::Store m_store;
    QByteArray m_content; ///< of the file after the next flush; null if it has to be generated
    storage::FileWriter m_writer;
    QTimer m_timer;
    QTimer m_readTimer;
    QElapsedTimer m_sinceOpen;
    QElapsedTimer m_sinceFlush;
    Reading m_reading = Reading::Done;
    bool m_isDamaged = false;
    bool m_unread = false;  ///< the file is unreadable and must be copied before the first write
    bool m_changed = false; ///< a change is neither on disk nor being written
    bool m_failing = false;
};
