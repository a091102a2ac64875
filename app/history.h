#pragma once

#include "mixer/wallclock.h"
#include "storage/store.h"

#include <QUndoStack>

#include <functional>

/// The undo history of the mixer. It keeps the change sets that have a title and replays one as a
/// transaction, so that store, screen and device follow as after any other change. Works without a
/// device. GUI thread only.
///
/// Successive change sets with the same merge key become one step, for example the moves of a drag.
/// A merge key that begins with "run:" joins only changes that follow within a second. A step whose
/// changes have cancelled each other disappears.
class History : public QObject
{
    Q_OBJECT

public:
    static constexpr int limit = 1000; ///< steps

    /// Both must outlive the object.
    History(storage::Store &store, mixer::WallClock &clock);

    QUndoStack &stack() { return m_stack; }

    /// Adds a step for something that was done outside the store, such as writing a scene file.
    void push(
        const QString &title, const std::function<void()> &undo, const std::function<void()> &redo);

signals:
    /// A step that was recorded from the store has been undone or redone.
    void replayed();

private:
    class Changes;
    class Action;

    void record(const storage::ChangeSet &changes);
    void replay(const storage::ChangeSet &changes, bool forwards);

    storage::Store &m_store;
    mixer::WallClock &m_clock;
    QUndoStack m_stack;
    bool m_replaying = false;
};
