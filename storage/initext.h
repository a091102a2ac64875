#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

#include <optional>

/// The text of an INI file as Qt's settings write it: groups in brackets, "key=value" lines, values
/// that are quoted and escaped where they need it. Pure functions and values; any thread.
///
/// Qt's own reader is not used: it aborts the program on a value that claims to be a huge object,
/// lets one open quote swallow the rest of the file, and reports a write that the disk has refused
/// as done. A damaged line here costs the value on that line, and nothing else.
namespace storage {

/// The entries of a file: values by "group/key", each as it stands in the file: quoted and escaped.
/// A value that nobody changes is therefore written back as it was read, whatever it means.
using Entries = QMap<QByteArray, QByteArray>;

/// The value of a text. Every text has one, unpaired surrogates included.
QByteArray encodeText(const QString &text);

/// The text of a value. A value with commas outside quotes, as written by hand, is one text.
/// Nothing if the value is no text: an object of Qt's ("@Variant(...)"), or not well-formed.
std::optional<QString> decodeText(const QByteArray &value);

/// The content of a file with these entries, in the order of their keys.
QByteArray toIni(const Entries &entries);

/// Reads a file piece by piece.
class IniReader
{
public:
    /// Longer lines are left out: 64 KiB. A value of the panel has some hundred bytes.
    static constexpr int longestLine = 64 * 1024;
    /// Of a file with more text than this (overlong lines not counted) the rest is left out.
    static constexpr int mostText = 4 * 1024 * 1024;

    /// The next bytes of the file. False if the rest of the file is of no interest.
    bool read(const char *bytes, qint64 count);
    /// To be called once at the end of the file.
    void finish();

    const Entries &entries() const { return m_entries; }
    /// Whether something could not be read as it stands: a line that is no setting, a control
    /// character, a byte that is not UTF-8 (such a line is read as Latin-1), an open quote, a line
    /// or a file that is too long, a last line without its end.
    bool isDamaged() const { return m_damaged; }
    bool isEmpty() const { return m_empty; } ///< whether the file has no bytes

private:
    void takeLine();
    void takeHeader(const QByteArray &line);
    void takeSetting(const QByteArray &line);

    Entries m_entries;
    QByteArray m_line;
    QByteArray m_group = QByteArrayLiteral("General"); ///< null after a header that cannot be read
    int m_textLeft = mostText;
    bool m_tooLong = false; ///< the line being read
    bool m_damaged = false;
    bool m_empty = true;
    bool m_first = true; ///< the line being read is the first
};

} // namespace storage
