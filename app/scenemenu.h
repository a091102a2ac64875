#pragma once

#include <QMenu>

#include <array>

class SceneMemories;

/// The menu of the ten scene memories: saving, loading and renaming each, and initializing all.
/// GUI thread only.
class SceneMenu : public QMenu
{
    Q_OBJECT

public:
    /// @param scenes must outlive the menu
    SceneMenu(SceneMemories &scenes, QWidget *window);

signals:
    /// The live settings are now those of a scene.
    void recalled();

private:
    void addScene(int slot);
    void showName(int slot);
    void save(int slot);
    void load(int slot);
    void rename(int slot);
    void initialize();

    SceneMemories &m_scenes;
    QWidget *m_window;
    std::array<QMenu *, 10> m_menus;
};
