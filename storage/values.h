#pragma once

#include "storage/initext.h"
#include "storage/keys.h"

#include <QString>

#include <array>

namespace storage {

/// The values of a settings file: a plain value that can be copied and compared. Each stands as in
/// the file, quoted and escaped, so that one that nobody changes is written back as it was read. A
/// null value is a missing one. Any thread, one at a time.
class Values
{
public:
    Values() = default;
    /// The values of a file. Entries with a name that the panel does not know are foreign.
    explicit Values(const Entries &entries);

    /// The file's entries; those of the session are none.
    Entries entries() const;

    bool isEmpty() const; ///< whether there would be no entry in a file
    /// Whether there is a value in any of these groups, from the first to the last.
    bool hasGroup(Group first = trackGroup(1), Group last = lineOutGroup) const;

    const QByteArray &raw(Group group, Key key) const { return m_known[place(group, key)]; }
    void setRaw(Group group, Key key, const QByteArray &value)
    {
        m_known[place(group, key)] = value;
    }

    /// What others have written into the file.
    const Entries &foreign() const { return m_foreign; }
    void setForeign(const QByteArray &entry, const QByteArray &value);

    /// @name Typed values
    /// A missing value, or one that is not of its type, reads as its default: 157, the switch's
    /// own, or "".
    ///@{
    int read(Group group, IntegerKey key) const;
    bool read(Group group, SwitchKey key) const;
    QString read(Group group, TextKey key) const;
    template <typename TypedKey>
    auto read(const Setting<TypedKey> &setting) const
    {
        return read(setting.group, setting.key);
    }
    ///@}

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

/// Values as they stand in a file.
QByteArray encode(int value);
QByteArray encode(bool value);
QByteArray encode(const QString &value);

} // namespace storage
