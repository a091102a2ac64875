#pragma once

#include "storage/initext.h"
#include "storage/keys.h"

#include <QString>

#include <array>
#include <optional>

namespace storage {

/// The values of a settings file. The object is a plain value: it can be copied and compared. Each
/// value is stored raw, that is quoted and escaped as in the file. A null value is a missing one.
/// Any thread may use an object, but only one at a time.
class Values
{
public:
    Values() = default;
    /// Takes the values of a file. Entries with a name that the panel does not know become foreign.
    explicit Values(const Entries &entries);

    /// Returns the entries of a file with these values. Session-only values are left out.
    Entries entries() const;

    /// Returns whether a file with these values would have no entry.
    bool isEmpty() const;
    /// Returns whether any group from the first to the last has a value.
    bool hasGroup(Group first = trackGroup(1), Group last = lineOutGroup) const;

    /// Returns a raw value, null if it is missing.
    const QByteArray &raw(Group group, Key key) const { return m_known[place(group, key)]; }
    /// Stores a raw value. A null value removes it.
    void setRaw(Group group, Key key, const QByteArray &value)
    {
        m_known[place(group, key)] = value;
    }

    /// The entries with names that the panel does not know.
    const Entries &foreign() const { return m_foreign; }
    /// Stores a raw foreign value. A null value removes it.
    void setForeign(const QByteArray &entry, const QByteArray &value);

    /// @name Typed values
    /// A value that is missing or unreadable becomes the default: 157 for an integer, the default
    /// of the key for a switch, "" for a text. An integer that is not a number also becomes 157. A
    /// switch with any text but "", "0" and "false" is on.
    ///@{
    int read(Group group, IntegerKey key) const
    {
        return number(group, key).value_or(missingInteger);
    }
    bool read(Group group, SwitchKey key) const;
    QString read(Group group, TextKey key) const;
    template <typename TypedKey>
    auto read(const Setting<TypedKey> &setting) const
    {
        return read(setting.group, setting.key);
    }
    ///@}

    /// Returns an integer, or nothing if it is missing or no number.
    std::optional<int> number(Group group, IntegerKey key) const;

    bool operator==(const Values &o) const
    {
        return m_known == o.m_known && m_foreign == o.m_foreign;
    }

private:
    static constexpr std::size_t place(Group group, Key key)
    {
        return static_cast<std::size_t>(group) * keyCount + static_cast<std::size_t>(key);
    }

    std::array<QByteArray, std::size_t{groupCount} * keyCount> m_known;
    Entries m_foreign;
};

/// Return the raw value of an integer, a switch or a text. The result is never null.
QByteArray encode(int value);
QByteArray encode(bool value);
QByteArray encode(const QString &value);
QByteArray encode(const char *) = delete; // a pointer would count as a switch

} // namespace storage
