#pragma once

#include "storage/settings.h"

#include <QString>

#include <optional>

/// The ten scene memories: snapshots of the live settings, each a file beside the live one, and
/// their names in a file of their own. Slots are 1 to 10. GUI thread only.
class SceneMemories
{
public:
    static constexpr int slotCount = 10;

    /// @param live must outlive the scenes
    /// @param organisation that of the live settings
    SceneMemories(
        Settings &live, const char *organisation, storage::Disk &disk = storage::realDisk());

    /// Keeps the live settings as the scene of a slot, byte for byte.
    /// @return false if that fails, which is logged; the scene from before is still there
    bool save(int slot);

    /// The content of a slot, as far as it can be read. Nothing if there is no such scene: a file
    /// that is empty, or holds no group of the panel's, is none.
    std::optional<storage::FileContent> read(int slot) const;

    /// The name of a slot; "SceneMemory1" to "SceneMemory10" until it is given another one.
    QString name(int slot) const;

    /// An empty name takes the first one back.
    void rename(int slot, const QString &name);

    /// Deletes all scenes and their names; the live settings stay. Failures are logged.
    void initialize();

private:
    QString fileName(int slot) const;

    Settings &m_live;
    storage::Disk &m_disk;
    const char *const m_organisation;
    Settings m_names;
};
