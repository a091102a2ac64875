#pragma once

#include "storage/scenememories.h"
#include "storage/values.h"

#include <QObject>
#include <QTimer>

#include <array>
#include <optional>

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

    void save(int slot);
    void load(int slot); ///< or tells the user that the slot holds no scene
    void rename(int slot);
    void initialize(); ///< all of them, if the user agrees

signals:
    void slotChanged(int slot); ///< its name or its marks
    /// The user has saved or recalled a scene.
    /// @param canUndo whether that is a step of the history
    void done(const QString &what, bool canUndo);

private:
    static std::size_t index(int slot) { return static_cast<std::size_t>(slot - 1); }
    QString title(int slot) const;
    void read(int slot);
    void replace(int slot, const QByteArray &bytes);
    void setCurrent(int slot);
    void compare();

    Settings &m_settings;
    const char *const m_organisation;
    SceneMemories m_memories;
    mixer::Mixer &m_mixer;
    History &m_history;
    QWidget *const m_window;
    std::array<std::optional<storage::Values>, SceneMemories::slotCount> m_slots;
    int m_current = 0;
    bool m_isChanged = false;
    QTimer m_comparison; ///< running while the values have changed since the last comparison
};
