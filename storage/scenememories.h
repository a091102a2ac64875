#pragma once

#include "storage/settings.h"

#include <QString>

/// The ten scene memories: snapshots of the live settings, each a file beside the live one, and
/// their names in a file of their own. Slots are 1 to 10. GUI thread only.
///
/// A scene recalls mixer and outputs. What belongs to the panel stays as it is: the page on screen,
/// the choices of the Interface page, and what the user wants to see no more.
class SceneMemories
{
public:
    /// Table index of the live settings; those of the scenes are their slots.
    static constexpr int liveSettings = 0;
    static constexpr int slotCount = 10;

    /// @param live must outlive the scenes
    /// @param organisation that of the live settings
    SceneMemories(
        Settings &live, const char *organisation, storage::Disk &disk = storage::realDisk());

    /// Takes the live settings as the scene of a slot.
    /// @return false when it could not; the scene from before is still there, and the log says so
    bool save(int slot);

    /// Makes a scene the live settings.
    /// @return false when there is no such scene; nothing has changed then
    bool load(int slot);

    /// Whether the slot holds a scene that can be loaded. A file that is empty, or holds no group
    /// of the panel's, is none.
    bool exists(int slot) const;

    /// The name of a slot; "SceneMemory1" to "SceneMemory10" until it is given another one.
    QString name(int slot) const;

    /// An empty name takes the first one back.
    void rename(int slot, const QString &name);

    /// Deletes all scenes and their names; the live settings stay. Failures are logged.
    void initialize();

    /// The file of a slot, or of the live settings.
    QString fileName(int index) const;

private:
    Settings &m_live;
    storage::Disk &m_disk;
    const char *const m_organisation;
    Settings m_names;
};
