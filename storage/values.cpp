#include "storage/values.h"

#include <algorithm>

namespace storage {

Values::Values(const Entries &entries)
{
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        const int slash = entry.key().indexOf('/');
        const auto group = groupNamed(entry.key().left(slash));
        const auto key = keyNamed(entry.key().mid(slash + 1));
        if (group && key)
            setRaw(*group, *key, entry.value());
        else
            m_foreign.insert(entry.key(), entry.value());
    }
}

Entries Values::entries() const
{
    Entries entries = m_foreign;
    for (int group = 0; group < groupCount; ++group)
        for (int key = 0; key < keyCount; ++key) {
            const QByteArray &value = raw(Group(group), Key(key));
            if (value.isNull() || isOfTheSession(Key(key))) continue;
            entries.insert(nameOf(Group(group)) + '/' + nameOf(Key(key)), value);
        }
    return entries;
}

bool Values::isEmpty() const
{
    return m_foreign.isEmpty() && !hasGroup(Group(0), Group(groupCount - 1));
}

bool Values::hasGroup(Group first, Group last) const
{
    for (int group = int(first); group <= int(last); ++group)
        for (int key = 0; key < keyCount; ++key)
            if (!isOfTheSession(Key(key)) && !raw(Group(group), Key(key)).isNull()) return true;
    // A foreign key in one of the panel's groups counts as well.
    return std::any_of(m_foreign.keyBegin(), m_foreign.keyEnd(), [&](const QByteArray &entry) {
        const auto group = groupNamed(entry.left(entry.indexOf('/')));
        return group && *group >= first && *group <= last;
    });
}

void Values::setForeign(const QByteArray &entry, const QByteArray &value)
{
    if (value.isNull())
        m_foreign.remove(entry);
    else
        m_foreign.insert(entry, value);
}

std::optional<int> Values::number(Group group, IntegerKey key) const
{
    const QByteArray &value = raw(group, key.key);
    bool isNumber = false;
    int number = value.toInt(&isNumber); // fast path: nearly every value needs no decoding
    if (!isNumber && !value.isEmpty())
        number = decodeText(value).value_or(QString()).toInt(&isNumber);
    return isNumber ? std::make_optional(number) : std::nullopt;
}

// contract: Qt's settings read a switch in this way: any text but "", "0" and "false" is on.
bool Values::read(Group group, SwitchKey key) const
{
    const QByteArray &value = raw(group, key.key);
    if (value == "true") return true;
    const auto word = value.isNull() ? std::nullopt : decodeText(value);
    if (!word) return key.missing;
    const QString lower = word->toLower();
    return !lower.isEmpty() && lower != QLatin1String("0") && lower != QLatin1String("false");
}

QString Values::read(Group group, TextKey key) const
{
    return decodeText(raw(group, key.key)).value_or(QString());
}

QByteArray encode(int value)
{
    return QByteArray::number(value);
}

QByteArray encode(bool value)
{
    return value ? QByteArrayLiteral("true") : QByteArrayLiteral("false");
}

QByteArray encode(const QString &value)
{
    const QByteArray text = encodeText(value);
    return text.isNull() ? QByteArray("") : text;
}

} // namespace storage
