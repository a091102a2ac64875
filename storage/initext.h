#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

#include <optional>

/// The text of an INI file in the format of Qt's settings: groups in brackets, "key=value" lines,
/// and values that are quoted and escaped where necessary. Pure functions and values; any thread.
///
/// Qt's own reader is not safe for damaged files. It aborts the program on a value that claims to
/// be a huge object, it loses the rest of the file after one open quote, and it reports success for
/// a write that the disk has refused. This reader loses only the value on a damaged line.
namespace storage {

/// The entries of a file: raw values by "group/key". A raw value is quoted and escaped as in the
/// file, so that a value that does not change is written back exactly as it was read.
using Entries = QMap<QByteArray, QByteArray>;

/// Returns the raw value of a text. Works for every text, including unpaired surrogates.
QByteArray encodeText(const QString &text);

/// Returns the text of a raw value. A value with commas outside quotes counts as one text, because
/// a user could have typed it. Returns nothing if the value is malformed or is not a text but a Qt
/// object ("@Variant(...)").
std::optional<QString> decodeText(const QByteArray &value);

/// Returns the content of a file with these entries, in the order of their keys.
QByteArray toIni(const Entries &entries);

/// Reads a file piece by piece.
class IniReader
{
public:
    /// Maximum length of a line in bytes. Longer lines are skipped. The panel's longest value, the
    /// news text, is far shorter.
    static constexpr int longestLine = 64 * 1024;
    /// Maximum length of the file in bytes, without the skipped lines. The rest is not read.
    static constexpr int mostText = 4 * 1024 * 1024;

    /// Reads the next bytes of the file. Returns false if the rest of the file is not needed.
    bool read(const char *bytes, qint64 count);
    /// Ends the reading. Must be called once, at the end of the file.
    void finish();

    /// Returns the entries read so far.
    const Entries &entries() const { return m_entries; }
    /// Returns whether any part of the file was unreadable or looked damaged: a line that is not a
    /// setting, a control character, a byte that is not UTF-8 (its line is read as Latin-1), an
    /// open quote, a line or a file that is too long, a last line without a line end.
    bool isDamaged() const { return m_damaged; }

private:
    void takeLine();
    void takeHeader(const QByteArray &line);
    void takeSetting(const QByteArray &line);

    Entries m_entries;
    QByteArray m_line;
    QByteArray m_group = QByteArrayLiteral("General"); ///< null after an unreadable header
    int m_textLeft = mostText;
    bool m_tooLong = false; ///< the line being read is too long
    bool m_damaged = false;
    bool m_first = true; ///< the line being read is the first
};

} // namespace storage
