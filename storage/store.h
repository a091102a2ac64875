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

/// A foreign value that has changed: one whose name the panel does not know.
struct ForeignChange
{
    QByteArray entry;
    QByteArray before;
    QByteArray after;
};

/// The changes of one transaction. Each value occurs once, and only if it has really changed.
struct ChangeSet
{
    QString title; ///< for the undo menu: "Channel 3 fader"; "" if the changes cannot be undone
    /// Undo joins successive change sets with the same key. "" stands for a separate step.
    QByteArray mergeKey;
    std::vector<Change> changes;
    std::vector<ForeignChange> foreign;

    bool isEmpty() const { return changes.empty() && foreign.empty(); }
    bool contains(Group group, Key key) const; ///< foreign values excepted
};

class Transaction;

/// The state of the panel. Only a transaction changes it. GUI thread only.
class Store : public QObject
{
    Q_OBJECT

public:
    const Values &values() const { return m_values; }

    /// Replaces all values without a signal. Used when a file is read for the first time.
    void load(const Values &values) { m_values = values; }

signals:
    /// A transaction has ended and has changed at least one value.
    void committed(const storage::ChangeSet &changes);

private:
    friend class Transaction;

    Values m_values;
    bool m_inTransaction = false;
};

/// Collects writes and ends with one change set. The store shows each write at once. Destroying a
/// transaction that was not committed restores the values from before. Only one transaction can
/// exist at a time.
class Transaction
{
public:
    /// @param title    see ChangeSet::title
    /// @param mergeKey see ChangeSet::mergeKey
    explicit Transaction(
        Store &store, const QString &title = QString(), const QByteArray &mergeKey = {});
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    /// The values of the store, including the writes of this transaction.
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
    /// Writes a raw value. A null value removes the key.
    void set(Group group, Key key, const QByteArray &value);
    /// Writes a raw foreign value, at most once for each entry. A null value removes the entry.
    void setForeign(const QByteArray &entry, const QByteArray &value);

    void setTitle(const QString &title) { m_changes.title = title; }

    /// Ends the transaction and makes the store emit committed() if a value has changed.
    /// @return whether a value has changed
    bool commit();

private:
    void rollBack();

    Store &m_store;
    ChangeSet m_changes;
    /// For each known value its index in the changes plus 1, or 0 if it was not written.
    std::vector<int> m_places;
    bool m_ended = false;
};

} // namespace storage
