#pragma once

#include <QWidget>

#include <array>

class QPushButton;
class SceneMenu;
class Scenes;

/// The row of the ten scenes at the top of all pages. A click recalls a scene; the right button
/// opens its menu, and so does a click on an empty slot. GUI thread only.
class SceneBar : public QWidget
{
    Q_OBJECT

public:
    /// Both must outlive the bar.
    SceneBar(Scenes &scenes, SceneMenu &menu, QWidget *parent);

private:
    QPushButton *makeButton(int slot);
    void show(int slot);
    void openMenu(int slot);

    Scenes &m_scenes;
    SceneMenu &m_menu;
    std::array<QPushButton *, 10> m_buttons;
};
