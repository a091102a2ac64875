#include "app/history.h"

#include "mixer/rules.h"

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 runTime = 1000; // milliseconds between two changes of a run
constexpr int changesId = 1;     // for merging; see QUndoCommand::id()

/// Appends later changes to earlier ones. What ends as it began is dropped.
template <typename Change, typename Same>
void append(std::vector<Change> &changes, const std::vector<Change> &later, Same isSame)
{
    for (const Change &change : later) {
        const auto earlier = std::find_if(
            changes.begin(), changes.end(), [&](const Change &c) { return isSame(c, change); });
        if (earlier == changes.end())
            changes.push_back(change);
        else
            earlier->after = change.after;
    }
    const auto cancelled = [](const Change &c) {
        return c.before == c.after && c.before.isNull() == c.after.isNull();
    };
    changes.erase(std::remove_if(changes.begin(), changes.end(), cancelled), changes.end());
}

void append(storage::ChangeSet &changes, const storage::ChangeSet &later)
{
    append(changes.changes, later.changes, [](const auto &x, const auto &y) {
        return x.group == y.group && x.key == y.key;
    });
    append(changes.foreign, later.foreign, [](const auto &x, const auto &y) {
        return x.entry == y.entry;
    });
}

/// Returns the title of a step that joins changes of two controls: "Remote: several controls".
QString joinedTitle(const QString &earlier, const QString &later)
{
    const QString colon = QStringLiteral(": ");
    if (earlier == later || !earlier.contains(colon)) return earlier;
    return earlier.section(colon, 0, 0) + colon + QStringLiteral("several controls");
}

} // namespace

/// A step that was recorded from the store.
class History::Changes : public QUndoCommand
{
public:
    Changes(History &history, const storage::ChangeSet &changes, qint64 time)
        : m_history(history), m_changes(changes), m_time(time)
    {
        setText(changes.title);
    }

    void undo() override { m_history.replay(m_changes, false); }
    /// The stack calls redo() when the step is added, and then the changes are already made.
    void redo() override
    {
        if (std::exchange(m_isNew, false)) return;
        m_history.replay(m_changes, true);
    }

    int id() const override { return changesId; }
    bool mergeWith(const QUndoCommand *command) override
    {
        const auto &later = static_cast<const Changes &>(*command);
        if (m_changes.mergeKey.isEmpty() || m_changes.mergeKey != later.m_changes.mergeKey)
            return false;
        if (m_changes.mergeKey.startsWith("run:") && later.m_time - m_time >= runTime) return false;
        append(m_changes, later.m_changes);
        setText(joinedTitle(text(), later.text()));
        m_time = later.m_time;
        setObsolete(m_changes.isEmpty());
        return true;
    }

private:
    History &m_history;
    storage::ChangeSet m_changes;
    qint64 m_time; ///< of the latest change
    bool m_isNew = true;
};

/// A step that was done outside the store.
class History::Action : public QUndoCommand
{
public:
    Action(
        const QString &title, const std::function<void()> &undo, const std::function<void()> &redo)
        : QUndoCommand(title), m_undo(undo), m_redo(redo)
    {
    }

    void undo() override { m_undo(); }
    void redo() override
    {
        if (!std::exchange(m_isNew, false)) m_redo();
    }

private:
    const std::function<void()> m_undo;
    const std::function<void()> m_redo;
    bool m_isNew = true;
};

History::History(storage::Store &store, mixer::WallClock &clock) : m_store(store), m_clock(clock)
{
    m_stack.setUndoLimit(limit);
    connect(&store, &storage::Store::committed, this, &History::record);
}

void History::push(
    const QString &title, const std::function<void()> &undo, const std::function<void()> &redo)
{
    m_stack.push(new Action(title, undo, redo));
}

void History::record(const storage::ChangeSet &changes)
{
    if (m_replaying || changes.title.isEmpty()) return;
    m_stack.push(new Changes(*this, changes, m_clock.now()));
}

void History::replay(const storage::ChangeSet &changes, bool forwards)
{
    m_replaying = true;
    storage::Transaction transaction(m_store);
    mixer::replay(transaction, changes, forwards);
    transaction.commit();
    m_replaying = false;
    emit replayed();
}
