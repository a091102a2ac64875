#include "app/scenemenu.h"

#include "app/boxes.h"
#include "app/history.h"
#include "app/scenememorydialog.h"
#include "mixer/mixer.h"
#include "storage/scenememories.h"

#include <QFontMetrics>

namespace {

constexpr int titleWidth = 240; // pixels; a longer scene name is cut short in the menu

/// Returns the function key of a scene. Digit keys would not do: on keyboards that need Shift for
/// digits, the shortcuts for saving (with Shift) and loading (without) could not be told apart.
QString functionKey(int slot)
{
    return QStringLiteral("F%1").arg(slot);
}

} // namespace

SceneMenu::SceneMenu(
    SceneMemories &scenes, Settings &settings, mixer::Mixer &mixer, History &history,
    QWidget *window)
    : QMenu(QStringLiteral("&SceneMemory"), window), m_scenes(scenes), m_settings(settings),
      m_mixer(mixer), m_history(history), m_window(window)
{
    for (int slot = 1; slot <= static_cast<int>(m_menus.size()); ++slot)
        addScene(slot);
    addSeparator();
    QAction *all = addAction(QStringLiteral("&Initialize"), this, &SceneMenu::initialize);
    all->setObjectName(QStringLiteral("actionInitialize_SceneMemory"));
}

void SceneMenu::addScene(int slot)
{
    QMenu *menu = addMenu(QString());
    m_menus[static_cast<std::size_t>(slot - 1)] = menu;
    showName(slot);
    const auto add = [&](const char *text, const char *name, void (SceneMenu::*handler)(int)) {
        QAction *action = menu->addAction(QLatin1String(text));
        action->setObjectName(QLatin1String(name) + QString::number(slot));
        action->setAutoRepeat(false);
        connect(
            action, &QAction::triggered, this, [this, handler, slot] { (this->*handler)(slot); });
        return action;
    };
    add("&Save", "actionSave", &SceneMenu::save)
        ->setShortcut(QStringLiteral("Ctrl+Shift+") + functionKey(slot));
    add("&Load", "actionLoad", &SceneMenu::load)
        ->setShortcut(QStringLiteral("Ctrl+") + functionKey(slot));
    add("&Rename", "actionRename", &SceneMenu::rename);
}

void SceneMenu::showName(int slot)
{
    const QString name = m_scenes.name(slot);
    QString title = fontMetrics().elidedText(name, Qt::ElideRight, titleWidth);
    title.replace(QLatin1Char('&'), QStringLiteral("&&"));
    m_menus[static_cast<std::size_t>(slot - 1)]->setTitle(title);
}

void SceneMenu::save(int slot)
{
    const std::optional<QByteArray> before = m_scenes.bytes(slot);
    if (m_scenes.save(slot)) {
        const std::optional<QByteArray> after = m_scenes.bytes(slot);
        if (before && after)
            m_history.push(
                QStringLiteral("Save scene %1").arg(slot),
                [this, slot, before] { m_scenes.restore(slot, *before); },
                [this, slot, after] { m_scenes.restore(slot, *after); });
        return;
    }
    boxes::inform(
        m_window, QStringLiteral("The scene could not be saved. The previous one is "
                                 "kept."));
}

void SceneMenu::load(int slot)
{
    const std::optional<storage::FileContent> scene = m_scenes.read(slot);
    if (!scene) {
        boxes::inform(m_window, QStringLiteral("This scene memory does not exist."));
        return;
    }
    m_mixer.recall(storage::Values(scene->entries), QStringLiteral("Recall scene %1").arg(slot));
    m_settings.adoptContent(*scene);
    m_settings.acceptValues();
}

void SceneMenu::rename(int slot)
{
    auto *dialog = new SceneMemoryDialog(m_scenes.name(slot), m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog, slot] {
        m_scenes.rename(slot, dialog->name());
        showName(slot);
    });
    dialog->open();
}

void SceneMenu::initialize()
{
    boxes::askFirst(
        m_window, QStringLiteral("This operation initializes ALL Scene Memories."), [this] {
            m_scenes.initialize();
            for (int slot = 1; slot <= static_cast<int>(m_menus.size()); ++slot)
                showName(slot);
        });
}
