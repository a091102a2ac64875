#include "app/scenebar.h"

#include "app/scenemenu.h"
#include "app/scenes.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QStyle>
#include <QVariant>

namespace {

constexpr int buttonWidth = 70;
constexpr int buttonHeight = 22;
constexpr int spacing = 4;
constexpr int padding = 6; // on both sides of the text

void setMark(QWidget *button, const char *mark, bool isSet, bool &isNew)
{
    isNew = isNew || button->property(mark).toBool() != isSet;
    button->setProperty(mark, isSet);
}

} // namespace

SceneBar::SceneBar(Scenes &scenes, SceneMenu &menu, QWidget *parent)
    : QWidget(parent), m_scenes(scenes), m_menu(menu)
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(spacing);
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
    connect(button, &QPushButton::clicked, this, [this, slot] {
        m_scenes.holds(slot) ? m_scenes.load(slot) : openMenu(slot);
    });
    connect(
        button, &QPushButton::customContextMenuRequested, this, [this, slot] { openMenu(slot); });
    return button;
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
    bool isNew = false;
    setMark(button, "holds", holds, isNew);
    setMark(button, "current", isCurrent, isNew);
    if (isNew) {
        style()->unpolish(button);
        style()->polish(button);
    }

    const QString number = QString::number(slot);
    const QString name = m_scenes.isNamed(slot) ? m_scenes.name(slot) : QString();
    const QString star = isChanged ? QStringLiteral(" *") : QString();
    const QFontMetrics metrics = button->fontMetrics();
    const int space = buttonWidth - 2 * padding - metrics.horizontalAdvance(star);
    const QString text = name.isEmpty() ? number : number + QStringLiteral("  ") + name;
    QString shown = metrics.elidedText(text, Qt::ElideRight, space);
    button->setText(shown.replace(QLatin1Char('&'), QStringLiteral("&&")) + star);

    const QString title = name.isEmpty() ? QStringLiteral("Scene ") + number
                                         : QStringLiteral("Scene %1 %2").arg(number, name);
    QString state = holds ? QStringLiteral("saved") : QStringLiteral("empty");
    if (isCurrent) state = isChanged ? QStringLiteral("on, changed since") : QStringLiteral("on");
    button->setAccessibleName(title + QStringLiteral(", ") + state);
    const QString tip = holds ? QStringLiteral("Click: recall. Right click: save or rename.")
                              : QStringLiteral("Empty. Click to save the settings here.");
    button->setToolTip(QStringLiteral("<p style=\"white-space: pre\">%1<br>%2</p>")
                           .arg(title.toHtmlEscaped(), tip));
}
