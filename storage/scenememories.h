#pragma once

#include "storage/settings.h"

#include <QDateTime>
#include <QString>

#include <optional>

/// The ten scene memories. A scene is a snapshot of the live settings in a file beside the live
/// file. The names of the scenes are in a separate file. Slots are 1 to 10. GUI thread only.
class SceneMemories
{
public:
    static constexpr int slotCount = 10;

    /// @param live the live settings; must outlive the object
    /// @param organisation the organisation of the live settings
    SceneMemories(
        Settings &live, const char *organisation, storage::Disk &disk = storage::realDisk());

    /// Saves the live settings as the scene of a slot, byte for byte. The previous scene becomes
    /// the newest earlier version.
    /// @return false if that fails, which is logged; the previous scene is then kept
    bool save(int slot);
    /// Replaces the scene of a slot by these values, as save() does.
    bool replace(int slot, const storage::Values &values);

    /// @name Earlier versions
    /// The versions that were replaced, in a folder beside the scenes: 1 is the newest, 3 the
    /// oldest. A scene that is replaced by an equal one leaves no version.
    ///@{
    static constexpr int versionCount = 3;
    /// Returns when a version was saved as a scene, or an invalid time if there is none.
    QDateTime versionTime(int slot, int version) const;
    /// Puts a version back as the scene of the slot. The present scene becomes the newest version.
    /// Returns false if that fails, which is logged; scene and versions are then kept.
    bool restoreVersion(int slot, int version);
    ///@}

    /// Returns the readable content of a scene, or nothing if the scene does not exist. A file that
    /// is empty or has no group of the panel does not count as a scene.
    std::optional<storage::FileContent> read(int slot) const;

    /// Returns the bytes of a scene's file, null if there is no file. Returns nothing if the file
    /// cannot be read or has more than 16 MiB.
    std::optional<QByteArray> bytes(int slot) const;
    /// Replaces a scene's file by these bytes, or removes it if they are null. A file that another
    /// program has changed becomes the newest earlier version. Returns false if that fails, which
    /// is logged.
    /// @param expected the bytes of the present file, null for none, if nobody else has changed it
    bool restore(int slot, const QByteArray &bytes, const QByteArray &expected);

    /// Returns the name of a slot. The default names are "SceneMemory1" to "SceneMemory10".
    QString name(int slot) const;
    static QString defaultName(int slot);

    /// Renames a slot. An empty name restores the default name.
    void rename(int slot, const QString &name);

    /// Writes the names now, if they have changed.
    void flushNames() { m_names.flush(); }
    /// The file with the names, for its errors and their signals.
    const Settings &nameFile() const { return m_names; }
    /// Returns all entries of the file with the names, those that the panel does not know included.
    storage::Entries names() const { return m_names.values().entries(); }
    /// Replaces all entries by what names() has returned.
    void setNames(const storage::Entries &names);

    /// Deletes all scenes and their names. The scenes become earlier versions. Keeps the live
    /// settings, and the name of a scene that cannot be deleted. Failures are logged.
    void initialize();

private:
    QString fileName(int slot) const;
    QString versionName(int slot, int version) const;
    bool keepPresent(int slot);
    void addVersion(int slot);
    bool write(int slot, const QByteArray &bytes);
    bool remove(int slot);

    Settings &m_live;
    storage::Disk &m_disk;
    const char *const m_organisation;
    Settings m_names;
};
