#include "app/scenebar.h"

#include "app/scenefiles.h"
#include "app/scenemenu.h"
#include "app/scenes.h"
#include "widgets/plaintext.h"
#include "widgets/restyle.h"

#include <QDropEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolTip>
#include <QVariant>

namespace {

constexpr int buttonWidth = 66;
constexpr int buttonHeight = 22;
constexpr int spacing = 4;
constexpr int padding = 6; // on both sides of the text

} // namespace

SceneBar::SceneBar(Scenes &scenes, SceneMenu &menu, SceneFiles &files, QWidget *parent)
    : QWidget(parent), m_scenes(scenes), m_menu(menu), m_files(files)
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(spacing);
    auto *caption = new QLabel(QStringLiteral("SCENES"), this);
    caption->setProperty("role", QStringLiteral("sectionHead"));
    row->addWidget(caption);
    row->addSpacing(spacing);
    for (int slot = 1; slot <= static_cast<int>(m_buttons.size()); ++slot) {
        QPushButton *button = makeButton(slot);
        m_buttons[static_cast<std::size_t>(slot - 1)] = button;
        row->addWidget(button);
        show(slot);
    }
    connect(&scenes, &Scenes::slotChanged, this, &SceneBar::show);
}

QPushButton *SceneBar::makeButton(int slot)
{
    auto *button = new QPushButton(this);
    button->setObjectName(QStringLiteral("pB_Scene%1").arg(slot));
    button->setProperty("role", QStringLiteral("scene"));
    button->setFixedSize(buttonWidth, buttonHeight);
    button->setContextMenuPolicy(Qt::CustomContextMenu);
    button->setAcceptDrops(true);
    button->setProperty("slot", slot);
    button->installEventFilter(this);
    button->ensurePolished(); // the text is cut to the font of the style sheet
    connect(button, &QPushButton::clicked, this, [this, slot] {
        m_scenes.holds(slot) ? m_scenes.load(slot) : openMenu(slot);
    });
    connect(
        button, &QPushButton::customContextMenuRequested, this, [this, slot] { openMenu(slot); });
    return button;
}

bool SceneBar::eventFilter(QObject *watched, QEvent *event)
{
    const int slot = watched->property("slot").toInt();
    switch (event->type()) {
    case QEvent::ToolTip:
        showTip(slot);
        break;
    case QEvent::FocusIn: {
        showTip(slot);
        const QWidget *button = m_buttons[static_cast<std::size_t>(slot - 1)];
        const auto reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason)
            QToolTip::showText(button->mapToGlobal(QPoint(0, button->height())), button->toolTip());
        break;
    }
    case QEvent::DragEnter: {
        auto *drag = static_cast<QDragEnterEvent *>(event);
        if (SceneFiles::fileIn(*drag->mimeData()).isEmpty()) break;
        drag->setDropAction(Qt::CopyAction); // never the file itself
        drag->accept();
        return true;
    }
    case QEvent::Drop: {
        auto *drop = static_cast<QDropEvent *>(event);
        m_files.importFile(SceneFiles::fileIn(*drop->mimeData()), slot);
        drop->setDropAction(Qt::CopyAction);
        drop->accept();
        return true;
    }
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

/// Says what a recall would change now, which takes too long for every change of a value.
void SceneBar::showTip(int slot)
{
    QPushButton *button = m_buttons[static_cast<std::size_t>(slot - 1)];
    const QString name =
        m_scenes.isNamed(slot) ? QLatin1Char(' ') + m_scenes.name(slot) : QString();
    QStringList lines{QStringLiteral("Scene %1%2").arg(slot).arg(name)};
    if (m_scenes.holds(slot)) {
        lines += QStringLiteral("A recall changes ") + m_scenes.summary(slot) + QLatin1Char('.');
        lines += QStringLiteral("Click: recall. Right click: save, rename, files, versions.");
    } else {
        lines += QStringLiteral("Empty. Click to save the settings here.");
    }
    for (QString &line : lines)
        line = line.toHtmlEscaped();
    button->setToolTip(QStringLiteral("<span>%1</span>").arg(lines.join(QLatin1String("<br>"))));
    button->setAccessibleDescription(lines.value(1));
}

void SceneBar::openMenu(int slot)
{
    const QWidget *button = m_buttons[static_cast<std::size_t>(slot - 1)];
    m_menu.menuOf(slot)->popup(button->mapToGlobal(QPoint(0, button->height())));
}

void SceneBar::show(int slot)
{
    QPushButton *button = m_buttons[static_cast<std::size_t>(slot - 1)];
    const bool holds = m_scenes.holds(slot);
    const bool isCurrent = m_scenes.current() == slot;
    const bool isChanged = isCurrent && m_scenes.isChanged();
    setStyleProperty(button, "holds", holds);
    setStyleProperty(button, "current", isCurrent);

    const QString number = QString::number(slot);
    const QString name = m_scenes.isNamed(slot) ? m_scenes.name(slot) : QString();
    const QString star = isChanged ? QStringLiteral(" *") : QString();
    const QFontMetrics metrics = button->fontMetrics();
    const int space = buttonWidth - 2 * padding - metrics.horizontalAdvance(star);
    const QString text = name.isEmpty() ? number : number + QStringLiteral("  ") + name;
    const QString shown = metrics.elidedText(text, Qt::ElideRight, space);
    button->setText(plaintext::forMenu(shown) + star);

    const QString title = name.isEmpty() ? QStringLiteral("Scene ") + number
                                         : QStringLiteral("Scene %1 %2").arg(number, name);
    QString state = holds ? QStringLiteral("saved") : QStringLiteral("empty");
    if (isCurrent) state = isChanged ? QStringLiteral("on, changed since") : QStringLiteral("on");
    button->setAccessibleName(title + QStringLiteral(", ") + state);
    button->setToolTip(plaintext::forToolTip(title)); // until showTip()
}
