#include "app/scenemenu.h"

#include "app/scenefiles.h"
#include "app/scenes.h"
#include "widgets/colours.h"
#include "widgets/drawing.h"
#include "widgets/plaintext.h"

#include <QFontMetrics>
#include <QIcon>
#include <QLocale>
#include <QPainter>

namespace {

constexpr int titleWidth = 240; // pixels; a longer scene name is cut short in the menu
constexpr int iconSide = 16;

/// Returns the function key of a scene. Digit keys would not do: on keyboards that need Shift for
/// digits, the shortcuts for saving (with Shift) and loading (without) could not be told apart.
QString functionKey(int slot)
{
    return QStringLiteral("F%1").arg(slot);
}

/// Returns the marks of a scene: a ring for a slot that holds a scene, a disc for the scene
/// recalled last, and a star beside the disc if something has changed since.
QIcon markOf(const Scenes &scenes, int slot, qreal ratio)
{
    const bool isCurrent = scenes.current() == slot;
    const bool isChanged = isCurrent && scenes.isChanged();
    const bool isFull = scenes.holds(slot);
    const QString key = QStringLiteral("scene/%1%2%3").arg(isFull).arg(isCurrent).arg(isChanged);
    return drawing::pixmap(key, {iconSide, iconSide}, ratio, [=](QPainter &painter) {
        painter.setPen(QPen(isCurrent ? colours::accent : colours::quiet, 1.5));
        painter.setBrush(isCurrent ? QBrush(colours::accent) : Qt::NoBrush);
        if (isFull) painter.drawEllipse(QPointF(6, 8), 3.5, 3.5);
        if (isChanged)
            drawing::caption(
                painter, QRectF(10, 0, 6, 12), Qt::AlignCenter, QStringLiteral("*"), colours::text);
    });
}

} // namespace

SceneMenu::SceneMenu(Scenes &scenes, SceneFiles &files, QWidget *parent)
    : QMenu(QStringLiteral("&SceneMemory"), parent), m_scenes(scenes), m_files(files)
{
    setToolTipsVisible(true);
    for (int slot = 1; slot <= static_cast<int>(m_menus.size()); ++slot)
        addScene(slot);
    addSeparator();
    addFiles();
    addSeparator();
    QAction *all = addAction(QStringLiteral("&Initialize"), &scenes, &Scenes::initialize);
    all->setObjectName(QStringLiteral("actionInitialize_SceneMemory"));
    connect(&scenes, &Scenes::slotChanged, this, &SceneMenu::show);
}

void SceneMenu::addScene(int slot)
{
    QMenu *menu = addMenu(QString());
    m_menus[static_cast<std::size_t>(slot - 1)] = menu;
    show(slot);
    const auto add = [&](const char *text, const char *name, void (Scenes::*handler)(int)) {
        QAction *action = menu->addAction(QLatin1String(text));
        action->setObjectName(QLatin1String(name) + QString::number(slot));
        action->setAutoRepeat(false);
        connect(action, &QAction::triggered, this, [this, handler, slot] {
            (m_scenes.*handler)(slot);
        });
        return action;
    };
    add("&Save", "actionSave", &Scenes::save)
        ->setShortcut(QStringLiteral("Ctrl+Shift+") + functionKey(slot));
    add("&Load", "actionLoad", &Scenes::load)
        ->setShortcut(QStringLiteral("Ctrl+") + functionKey(slot));
    add("Recall &Except...", "actionLoadExcept", &Scenes::loadExcept);
    add("&Rename", "actionRename", &Scenes::rename);
    menu->addSeparator();
    const auto addFile = [&](const char *text, const char *name, void (SceneFiles::*handler)(int)) {
        QAction *action = menu->addAction(
            QLatin1String(text), this, [this, handler, slot] { (m_files.*handler)(slot); });
        action->setObjectName(QLatin1String(name) + QString::number(slot));
    };
    addFile("E&xport...", "actionExport", &SceneFiles::exportScene);
    addFile("&Import...", "actionImport", &SceneFiles::importScene);
    QMenu *versions = menu->addMenu(QStringLiteral("Earlier &Versions"));
    versions->setObjectName(QStringLiteral("menuVersions%1").arg(slot));
    connect(versions, &QMenu::aboutToShow, this, [this, versions, slot] {
        fillVersions(versions, slot);
    });
    connect(menu, &QMenu::aboutToShow, versions, [this, versions, slot] {
        bool isAny = false;
        for (int version = 1; version <= SceneMemories::versionCount; ++version)
            isAny = isAny || m_scenes.versionTime(slot, version).isValid();
        versions->setEnabled(isAny);
    });
}

/// Lists the versions of a scene by the time at which they were saved.
void SceneMenu::fillVersions(QMenu *menu, int slot)
{
    menu->clear();
    for (int version = 1; version <= SceneMemories::versionCount; ++version) {
        const QDateTime time = m_scenes.versionTime(slot, version);
        if (!time.isValid()) continue;
        menu->addAction(
            QLocale().toString(time, QStringLiteral("d MMM yyyy  hh:mm:ss")), this,
            [this, slot, version] { m_scenes.restoreVersion(slot, version); });
    }
}

void SceneMenu::addFiles()
{
    const auto add = [this](const char *text, const char *name, void (SceneFiles::*handler)()) {
        addAction(QLatin1String(text), &m_files, handler)->setObjectName(QLatin1String(name));
    };
    add("E&xport Current Settings...", "actionExport_Live", &SceneFiles::exportLive);
    add("I&mport Current Settings...", "actionImport_Live", &SceneFiles::importLive);
    add("&Back up All...", "actionBackup", &SceneFiles::backup);
    add("&Restore...", "actionRestore", &SceneFiles::restore);
}

void SceneMenu::show(int slot)
{
    QMenu *menu = menuOf(slot);
    const QString name = m_scenes.name(slot);
    menu->setTitle(plaintext::forMenu(fontMetrics().elidedText(name, Qt::ElideRight, titleWidth)));
    menu->menuAction()->setToolTip(plaintext::forToolTip(name));
    menu->menuAction()->setIcon(markOf(m_scenes, slot, devicePixelRatioF()));
}
