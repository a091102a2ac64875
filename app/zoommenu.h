#pragma once

#include <QMenu>

class QActionGroup;
class QMainWindow;
class QUndoStack;

/// The menu of the zooms. A zoom is disabled if the window would be larger than its screen. GUI
/// thread only.
class ZoomMenu : public QMenu
{
    Q_OBJECT

public:
    /// @param history the undo history, which a change of the zoom clears
    /// @param window  the window that has to fit; both must outlive the menu
    ZoomMenu(const QUndoStack &history, QMainWindow *window);

signals:
    /// The user has chosen another zoom, which fits. The check mark stays at the current one.
    void chosen(int percent);

private:
    QAction *add(const QString &text, const QString &name, int step);
    void addPercents();
    void refresh();
    void choose(int percent);
    bool fits(int percent) const;
    static QString reasonFor(int percent);

    const QUndoStack &m_history;
    QMainWindow *m_window;
    QActionGroup *m_percents;
    QAction *m_larger;
    QAction *m_smaller;
    QAction *m_warning;
};
