#include "storage/store.h"

#include <algorithm>

namespace storage {

bool ChangeSet::contains(Group group, Key key) const
{
    return std::any_of(changes.begin(), changes.end(), [&](const Change &change) {
        return change.group == group && change.key == key;
    });
}

Transaction::Transaction(Store &store, const QString &title, const QByteArray &mergeKey)
    : m_store(store), m_changes{title, mergeKey, {}, {}},
      m_places(std::size_t{groupCount} * keyCount)
{
    Q_ASSERT(!m_store.m_inTransaction);
    m_store.m_inTransaction = true;
}

Transaction::~Transaction()
{
    if (!m_ended) rollBack();
}

void Transaction::rollBack()
{
    for (const Change &change : m_changes.changes)
        m_store.m_values.setRaw(change.group, change.key, change.before);
    for (const ForeignChange &change : m_changes.foreign)
        m_store.m_values.setForeign(change.entry, change.before);
    m_store.m_inTransaction = false;
    m_ended = true;
}

void Transaction::write(Group group, const PositionKeys &keys, int position, const QString &text)
{
    write(group, keys.position, position);
    write(group, keys.text, text);
}

void Transaction::set(Group group, Key key, const QByteArray &value)
{
    Q_ASSERT(!m_ended);
    int &place =
        m_places[static_cast<std::size_t>(group) * keyCount + static_cast<std::size_t>(key)];
    if (place == 0) {
        m_changes.changes.push_back({group, key, m_store.m_values.raw(group, key), value});
        place = static_cast<int>(m_changes.changes.size());
    } else {
        m_changes.changes[static_cast<std::size_t>(place - 1)].after = value;
    }
    m_store.m_values.setRaw(group, key, value);
}

void Transaction::setForeign(const QByteArray &entry, const QByteArray &value)
{
    const QByteArray before = m_store.m_values.foreign().value(entry);
    m_changes.foreign.push_back({entry, before, value});
    m_store.m_values.setForeign(entry, value);
}

bool Transaction::commit()
{
    Q_ASSERT(!m_ended);
    const auto same = [](const auto &change) {
        return change.before == change.after && change.before.isNull() == change.after.isNull();
    };
    auto &changes = m_changes.changes;
    auto &foreign = m_changes.foreign;
    changes.erase(std::remove_if(changes.begin(), changes.end(), same), changes.end());
    foreign.erase(std::remove_if(foreign.begin(), foreign.end(), same), foreign.end());
    m_store.m_inTransaction = false;
    m_ended = true;
    if (m_changes.isEmpty()) return false;
    emit m_store.committed(m_changes);
    return true;
}

} // namespace storage
