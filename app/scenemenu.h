#pragma once

#include <QMenu>

#include <array>

class History;
class SceneMemories;

namespace mixer {
class Mixer;
} // namespace mixer
class Settings;

/// The menu of the ten scene memories. It saves, loads and renames each of them, and initializes
/// all. GUI thread only.
class SceneMenu : public QMenu
{
    Q_OBJECT

public:
    /// All arguments must outlive the menu.
    /// @param window parent of the menu and its boxes
    SceneMenu(
        SceneMemories &scenes, Settings &settings, mixer::Mixer &mixer, History &history,
        QWidget *window);

private:
    void addScene(int slot);
    void showName(int slot);
    void save(int slot);
    void load(int slot);
    void rename(int slot);
    void initialize();

    SceneMemories &m_scenes;
    Settings &m_settings;
    mixer::Mixer &m_mixer;
    History &m_history;
    QWidget *m_window;
    std::array<QMenu *, 10> m_menus;
};
