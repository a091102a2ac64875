#pragma once

#include "mixer/rules.h"
#include "storage/exchange.h"
#include "storage/scenememories.h"
#include "storage/values.h"

#include <QObject>
#include <QTimer>

#include <array>
#include <optional>
#include <vector>

class History;
class QWidget;

namespace mixer {
class Mixer;
} // namespace mixer

/// What the user does with the ten scene memories, and what menu and scene bar show of them. Slots
/// are 1 to 10. GUI thread only.
class Scenes : public QObject
{
    Q_OBJECT

public:
    /// All references must outlive the object.
    /// @param organisation of the native store, which keeps the scene that was recalled last
    /// @param window parent of the boxes
    Scenes(
        Settings &settings, const char *organisation, mixer::Mixer &mixer, History &history,
        QWidget *window);

    QString name(int slot) const { return m_memories.name(slot); }
    /// Returns whether the user has given the slot a name.
    bool isNamed(int slot) const;
    /// Returns whether the slot holds a scene.
    bool holds(int slot) const { return m_slots[index(slot)].has_value(); }
    /// Returns the slot that was recalled or saved last, or 0.
    int current() const { return m_current; }
    /// Returns whether a value that a recall writes differs from the current scene. The selection
    /// of a strip does not count.
    bool isChanged() const { return m_isChanged; }

    /// Writes the names now, if they have changed.
    void flush() { m_memories.flushNames(); }
    /// Returns whether the last write of the names failed.
    bool isWriteFailing() const { return m_memories.nameFile().isWriteFailing(); }

    void save(int slot); ///< or tells the user that it could not be saved
    void load(int slot); ///< or tells the user that the slot holds no scene
    /// The same without a box. They return false if nothing was done.
    bool trySave(int slot);
    bool tryLoad(int slot);
    /// Asks which strips to keep, and recalls.
    void loadExcept(int slot);
    void rename(int slot);
    void initialize(); ///< all of them, if the user agrees
    /// Says in a few words what load() would change. The slot must hold a scene.
    QString summary(int slot) const;

    /// @name Earlier versions, 1 (the newest) to SceneMemories::versionCount
    ///@{
    QDateTime versionTime(int slot, int version) const
    {
        return m_memories.versionTime(slot, version);
    }
    void restoreVersion(int slot, int version);
    ///@}

    /// @name Strips that a recall keeps
    ///@{
    const mixer::SafeStrips &safe() const { return m_safe; }
    void setSafe(const mixer::SafeStrips &safe);
    ///@}

    /// @name Exchange with files
    ///@{
    /// The slot must hold a scene.
    storage::ExchangeScene scene(int slot) const;
    storage::ExchangeScene live() const;
    std::vector<storage::ExchangeScene> all() const; ///< of all slots that hold a scene
    /// Replaces the scenes of their slots in one step.
    /// @param title of the step: "Import scene 3"
    void take(const std::vector<storage::ExchangeScene> &scenes, const QString &title);
    void takeLive(const storage::ExchangeScene &scene); ///< as a recall
    ///@}

signals:
    void slotChanged(int slot); ///< its name or its marks
    void safeChanged();
    void troubleChanged(); ///< isWriteFailing() has changed
    /// The user has saved, recalled, imported, restored or initialized scenes.
    /// @param canUndo whether that is a step of the history
    void done(const QString &what, bool canUndo);

private:
    /// What a step of the history puts back.
    struct State
    {
        struct File
        {
            int slot;
            QByteArray bytes; ///< null if there is none
            bool operator==(const File &o) const
            {
                return slot == o.slot && bytes == o.bytes && bytes.isNull() == o.bytes.isNull();
            }
        };
        std::vector<File> files; ///< of the slots that the step changes
        storage::Entries names;  ///< of all slots
        int current;
        bool operator==(const State &o) const
        {
            return files == o.files && names == o.names && current == o.current;
        }
    };

    static std::size_t index(int slot) { return static_cast<std::size_t>(slot - 1); }
    QString title(int slot) const;
    void read(int slot);
    void announceAll();
    State stateOf(const std::vector<int> &slotsInStep) const;
    bool put(const State &state, const State &replaced);
    bool pushStep(const QString &title, const State &before);
    void readSafe();
    bool recall(const storage::Values &values, const QString &title, int slot);
    void setCurrent(int slot);
    void compare();

    Settings &m_settings;
    const QString m_organisation;
    SceneMemories m_memories;
    mixer::Mixer &m_mixer;
    History &m_history;
    QWidget *const m_window;
    std::array<std::optional<storage::Values>, SceneMemories::slotCount> m_slots;
    int m_current = 0;
    bool m_isChanged = false;
    mixer::SafeStrips m_safe;
    QTimer m_comparison; ///< running while the values have changed since the last comparison
};
