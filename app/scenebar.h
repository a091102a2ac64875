#pragma once

#include <QWidget>

#include <array>

class QPushButton;
class SceneFiles;
class SceneMenu;
class Scenes;

/// The row of the ten scenes at the top of all pages. A click recalls a scene; the right button
/// opens its menu, and so does a click on an empty slot. The tool tip says
/// what a recall would change; the focus shows it too. A scene file that is dropped on a button is
/// imported there. GUI thread only.
class SceneBar : public QWidget
{
    Q_OBJECT

public:
    /// All must outlive the bar.
    SceneBar(Scenes &scenes, SceneMenu &menu, SceneFiles &files, QWidget *parent);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QPushButton *makeButton(int slot);
    void show(int slot);
    void openMenu(int slot);
    void showTip(int slot);

    Scenes &m_scenes;
    SceneMenu &m_menu;
    SceneFiles &m_files;
    std::array<QPushButton *, 10> m_buttons;
};
