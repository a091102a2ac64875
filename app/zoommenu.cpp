#include "app/zoommenu.h"

#include "app/zoom.h"

#include <QActionGroup>
#include <QApplication>
#include <QMainWindow>
#include <QScreen>
#include <QUndoStack>

#include <algorithm>

namespace {

/// Returns the zoom that is this many entries from the current one, or the first or last.
int neighbour(int step)
{
    const int *const at =
        std::find(std::begin(zoom::percents), std::end(zoom::percents), zoom::current());
    const auto place = at - std::begin(zoom::percents) + step;
    const auto last = std::end(zoom::percents) - std::begin(zoom::percents) - 1;
    return zoom::percents[std::clamp<std::ptrdiff_t>(place, 0, last)];
}

} // namespace

ZoomMenu::ZoomMenu(const QUndoStack &history, QMainWindow *window)
    : QMenu(QStringLiteral("&Zoom"), window), m_history(history), m_window(window),
      m_percents(new QActionGroup(this)),
      m_larger(add(QStringLiteral("&Larger"), QStringLiteral("actionZoomLarger"), 1)),
      m_smaller(add(QStringLiteral("&Smaller"), QStringLiteral("actionZoomSmaller"), -1))
{
    m_larger->setShortcuts(
        {QKeySequence(QStringLiteral("Ctrl++")), QKeySequence(QStringLiteral("Ctrl+="))});
    m_smaller->setShortcut(QKeySequence(QStringLiteral("Ctrl+-")));
    addSeparator();
    addPercents();
    addSeparator();
    m_warning = addAction(QStringLiteral("Changing the zoom clears the undo history"));
    m_warning->setObjectName(QStringLiteral("actionZoomWarning"));
    m_warning->setEnabled(false);
    setToolTipsVisible(true);
    connect(this, &QMenu::aboutToShow, this, &ZoomMenu::refresh);
    // The shortcuts of disabled actions would be dead, and the window may change its screen.
    connect(this, &QMenu::aboutToHide, this, [this] {
        for (QAction *action : {m_larger, m_smaller})
            action->setEnabled(true);
    });
}

QAction *ZoomMenu::add(const QString &text, const QString &name, int step)
{
    QAction *action = addAction(text);
    action->setObjectName(name);
    action->setAutoRepeat(false);
    connect(action, &QAction::triggered, this, [this, step] { choose(neighbour(step)); });
    return action;
}

void ZoomMenu::addPercents()
{
    for (const int percent : zoom::percents) {
        QAction *action = addAction(QStringLiteral("%1 %").arg(percent));
        action->setObjectName(QStringLiteral("actionZoom%1").arg(percent));
        action->setCheckable(true);
        action->setChecked(percent == zoom::current());
        action->setData(percent);
        m_percents->addAction(action);
        connect(action, &QAction::triggered, this, [this, percent] { choose(percent); });
    }
    QAction *full = m_percents->actions().constFirst();
    full->setShortcut(QKeySequence(QStringLiteral("Ctrl+0")));
    full->setAutoRepeat(false);
}

bool ZoomMenu::fits(int percent) const
{
    const QSize available = zoom::atFullSize(m_window->screen()->availableGeometry().size());
    return percent <= zoom::current() || zoom::fits(percent, zoom::extentOf(*m_window), available);
}

QString ZoomMenu::reasonFor(int percent)
{
    return QStringLiteral("At %1 % the window is larger than this screen").arg(percent);
}

/// Enables what can be chosen on the window's screen, and gives the reason where it cannot.
void ZoomMenu::refresh()
{
    const auto offer = [this](QAction *action, int percent) {
        const bool fitting = fits(percent);
        action->setEnabled(fitting);
        action->setToolTip(fitting ? QString() : reasonFor(percent));
    };
    for (QAction *action : m_percents->actions())
        offer(action, action->data().toInt());
    offer(m_larger, neighbour(1));
    if (neighbour(1) == zoom::current()) m_larger->setEnabled(false);
    m_smaller->setEnabled(neighbour(-1) != zoom::current());
    m_warning->setVisible(m_history.count() > 0);
}

void ZoomMenu::choose(int percent)
{
    for (QAction *action : m_percents->actions())
        action->setChecked(action->data().toInt() == zoom::current());
    const bool possible = percent != zoom::current() && fits(percent);
    if (possible && !QApplication::activeModalWidget()) emit chosen(percent);
}
