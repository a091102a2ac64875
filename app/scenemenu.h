#pragma once

#include <QMenu>

#include <array>

class SceneFiles;
class Scenes;

/// The menu of the ten scene memories. It saves, loads and renames each of them, and initializes
/// all. The icons of the scenes show the marks of the scene bar. GUI thread only.
class SceneMenu : public QMenu
{
    Q_OBJECT

public:
    /// Both must outlive the menu.
    SceneMenu(Scenes &scenes, SceneFiles &files, QWidget *parent);

    /// Returns the submenu of a slot.
    QMenu *menuOf(int slot) const { return m_menus[static_cast<std::size_t>(slot - 1)]; }

private:
    void addScene(int slot);
    void addFiles();
    void fillVersions(QMenu *menu, int slot);
    void show(int slot);

    Scenes &m_scenes;
    SceneFiles &m_files;
    std::array<QMenu *, 10> m_menus;
};
