#pragma once

#include <QMenu>

#include <array>

class Scenes;

/// The menu of the ten scene memories. It saves, loads and renames each of them, and initializes
/// all. The icons of the scenes show the marks of the scene bar. GUI thread only.
class SceneMenu : public QMenu
{
    Q_OBJECT

public:
    /// @param scenes must outlive the menu
    SceneMenu(Scenes &scenes, QWidget *parent);

    /// Returns the submenu of a slot.
    QMenu *menuOf(int slot) const { return m_menus[static_cast<std::size_t>(slot - 1)]; }

private:
    void addScene(int slot);
    void show(int slot);

    Scenes &m_scenes;
    std::array<QMenu *, 10> m_menus;
};
