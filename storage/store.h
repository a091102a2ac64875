#pragma once

#include "storage/values.h"

#include <QObject>

#include <vector>

namespace storage {

/// A value that has changed. A null value is a missing one.
struct Change
{
    Group group;
    Key key;
    QByteArray before;
    QByteArray after;
};

/// A value of somebody else's that has changed.
struct ForeignChange
{
    QByteArray entry;
    QByteArray before;
    QByteArray after;
};

/// What one transaction has changed: each value once, and none that is as it was.
struct ChangeSet
{
    QString title; ///< in words, for undo: "Channel 3 fader"; "" for what cannot be undone
    QByteArray
        mergeKey; ///< equal for those that undo takes together, "" for those that stand alone
    std::vector<Change> changes;
    std::vector<ForeignChange> foreign;

    bool isEmpty() const { return changes.empty() && foreign.empty(); }
    bool contains(Group group, Key key) const;
};

class Transaction;

/// The state of the panel, and the only way to change it: a transaction. GUI thread only.
class Store : public QObject
{
    Q_OBJECT

public:
    const Values &values() const { return m_values; }

    /// Replaces everything without telling anybody: for the first reading of a file.
    void load(const Values &values) { m_values = values; }

signals:
    /// A transaction has ended and has changed something. Delivered to views, sender, history and
    /// file in the order of their connections.
    void committed(const storage::ChangeSet &changes);

private:
    friend class Transaction;

    Values m_values;
    bool m_inTransaction = false;
};

/// Collects writes, and ends with one change set. What was written is read at once. A transaction
/// that is not committed leaves everything as it was. One at a time.
class Transaction
{
public:
    explicit Transaction(
        Store &store, const QString &title = QString(), const QByteArray &mergeKey = {});
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    /// With what this transaction has written.
    const Values &values() const { return m_store.m_values; }

    void write(Group group, IntegerKey key, int value) { set(group, key.key, encode(value)); }
    void write(Group group, SwitchKey key, bool value) { set(group, key.key, encode(value)); }
    void write(Group group, TextKey key, const QString &value)
    {
        set(group, key.key, encode(value));
    }
    void write(Group group, const PositionKeys &keys, int position, const QString &text);
    template <typename TypedKey, typename Value>
    void write(const Setting<TypedKey> &setting, const Value &value)
    {
        write(setting.group, setting.key, value);
    }
    /// Takes a value over as it stands, null for a missing one.
    void set(Group group, Key key, const QByteArray &value);
    void setForeign(const QByteArray &entry, const QByteArray &value);

    void setTitle(const QString &title) { m_changes.title = title; }

    /// Ends the transaction and tells those who listen, unless nothing has changed.
    /// @return whether something has changed
    bool commit();

private:
    void rollBack();

    Store &m_store;
    ChangeSet m_changes;
    std::vector<int> m_places; ///< of a known value in the changes, from 1; 0 without one
    bool m_ended = false;
};

} // namespace storage
