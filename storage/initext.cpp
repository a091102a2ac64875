#include "storage/initext.h"

#include <QTextCodec>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace storage {
namespace {

#ifdef Q_OS_WIN
constexpr char lineEnd[] = "\r\n";
#else
constexpr char lineEnd[] = "\n";
#endif

struct Escape
{
    char letter; ///< after the backslash
    std::uint16_t unit;
};
constexpr Escape escapes[] = {
    {'a', '\a'}, {'b', '\b'}, {'f', '\f'}, {'n', '\n'},  {'r', '\r'},
    {'t', '\t'}, {'v', '\v'}, {'"', '"'},  {'\\', '\\'},
};

bool isHexDigit(std::uint16_t unit)
{
    return (unit >= '0' && unit <= '9') || (unit >= 'a' && unit <= 'f') ||
           (unit >= 'A' && unit <= 'F');
}

bool isOctalDigit(char c)
{
    return c >= '0' && c <= '7';
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

/// Returns whether a byte is one that the panel never writes, because texts escape it.
bool isControl(char c)
{
    const auto byte = static_cast<std::uint8_t>(c);
    return byte < ' ' && c != '\t';
}

/// Decodes UTF-8. A byte order mark is a character like any other, unlike in QString::fromUtf8().
QString fromUtf8(const QByteArray &bytes, QTextCodec::ConverterState &state)
{
    return QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
}

bool isUtf8(const QByteArray &bytes)
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    fromUtf8(bytes, state);
    return state.invalidChars == 0 && state.remainingChars == 0;
}

bool isAscii(const QByteArray &bytes)
{
    return std::none_of(bytes.begin(), bytes.end(), [](char c) { return c & 0x80; });
}

/// Returns the index of the first wanted character outside quotes, or the size if there is none.
/// Returns -1 if a quote stays open.
int findUnquoted(const QByteArray &text, char wanted)
{
    bool quoted = false;
    for (int i = 0; i < text.size(); ++i) {
        if (text[i] == '\\')
            ++i;
        else if (text[i] == '"')
            quoted = !quoted;
        else if (text[i] == wanted && !quoted)
            return i;
    }
    return quoted ? -1 : text.size();
}

/// Decodes a raw value.
class Decoder
{
public:
    explicit Decoder(const QByteArray &value) : m_value(value) {}

    std::optional<QString> run()
    {
        while (m_at < m_value.size())
            step();
        if (m_quoted) return std::nullopt;
        flushBytes();
        trimEnd();
        return m_text;
    }

private:
    void step()
    {
        const char c = m_value[m_at++];
        if (c == '\\') {
            flushBytes();
            takeEscape();
        } else if (c == '"') {
            m_quoted = !m_quoted;
            flushBytes();
            m_kept = m_text.size();
        } else if (c == ',' && !m_quoted) {
            endPart();
        } else if (m_quoted || !isBlank(c) || !atStartOfPart()) {
            m_bytes += c;
        }
    }

    /// Removes the blanks at the end of a part. Quoted and escaped blanks stay.
    void trimEnd()
    {
        while (m_text.size() > m_kept && m_text.size() > m_partStart &&
               (m_text.back() == QLatin1Char(' ') || m_text.back() == QLatin1Char('\t')))
            m_text.chop(1);
    }

    void endPart()
    {
        flushBytes();
        trimEnd();
        m_text += QLatin1String(", ");
        m_partStart = m_kept = m_text.size();
    }

    bool atStartOfPart() const { return m_bytes.isEmpty() && m_text.size() == m_partStart; }

    void flushBytes()
    {
        if (m_bytes.isEmpty()) return;
        QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
        m_text += isAscii(m_bytes) ? QString::fromLatin1(m_bytes) : fromUtf8(m_bytes, state);
        m_bytes.clear();
    }

    void takeEscape()
    {
        if (m_at == m_value.size()) return;
        const char c = m_value[m_at++];
        const auto *known = std::find_if(
            std::begin(escapes), std::end(escapes), [c](const Escape &e) { return e.letter == c; });
        if (known != std::end(escapes))
            append(known->unit);
        else if (c == 'x')
            append(takeNumber(16));
        else if (isOctalDigit(c))
            --m_at, append(takeNumber(8));
        else
            append(static_cast<std::uint8_t>(c));
    }

    std::uint16_t takeNumber(int base)
    {
        unsigned int number = 0;
        while (m_at < m_value.size()) {
            const char c = m_value[m_at];
            const bool digit =
                base == 8 ? isOctalDigit(c) : isHexDigit(static_cast<std::uint8_t>(c));
            if (!digit) break;
            const char text[] = {c, '\0'};
            number = number * static_cast<unsigned int>(base) +
                     static_cast<unsigned int>(std::strtol(text, nullptr, base));
            ++m_at;
        }
        return static_cast<std::uint16_t>(number);
    }

    void append(std::uint16_t unit)
    {
        m_text += QChar(unit);
        m_kept = m_text.size();
    }

    const QByteArray &m_value;
    QString m_text;
    QByteArray m_bytes; ///< UTF-8 that is not decoded yet
    int m_at = 0;
    int m_partStart = 0; ///< index in the text at which the current part between commas begins
    int m_kept = 0;      ///< blanks before this index in the text are not removed
    bool m_quoted = false;
};

} // namespace

QByteArray encodeText(const QString &text)
{
    const QString stored = text.startsWith(QLatin1Char('@')) ? QLatin1Char('@') + text : text;
    QByteArray value;
    bool needsQuotes = stored.startsWith(QLatin1Char(' ')) || stored.endsWith(QLatin1Char(' '));
    bool afterNumber = false; // a hexadecimal digit here would extend the escape before it
    const auto escapeUnit = [&](std::uint16_t unit) {
        value += "\\x" + QByteArray::number(unit, 16);
        afterNumber = true;
    };
    for (int i = 0; i < stored.size(); ++i) {
        const std::uint16_t unit = stored[i].unicode();
        if (afterNumber && isHexDigit(unit)) {
            escapeUnit(unit);
            continue;
        }
        afterNumber = false;
        needsQuotes = needsQuotes || unit == ';' || unit == ',' || unit == '=';
        const auto *known =
            std::find_if(std::begin(escapes), std::end(escapes), [unit](const Escape &e) {
                return e.unit == unit;
            });
        const bool pair =
            stored[i].isHighSurrogate() && i + 1 < stored.size() && stored[i + 1].isLowSurrogate();
        if (known != std::end(escapes)) {
            value += '\\';
            value += known->letter;
        } else if (
            unit < ' ' || unit == QChar::ByteOrderMark || (stored[i].isSurrogate() && !pair)) {
            escapeUnit(unit);
        } else if (pair) {
            value += stored.mid(i, 2).toUtf8();
            ++i;
        } else {
            value += QString(stored[i]).toUtf8();
        }
    }
    return needsQuotes ? '"' + value + '"' : value;
}

std::optional<QString> decodeText(const QByteArray &value)
{
    std::optional<QString> text = Decoder(value).run();
    if (!text || !text->startsWith(QLatin1Char('@'))) return text;
    if (!text->startsWith(QLatin1String("@@"))) return std::nullopt;
    return text->mid(1);
}

QByteArray toIni(const Entries &entries)
{
    QByteArray content;
    std::optional<QByteArray> group;
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        const int slash = entry.key().lastIndexOf('/'); // only the group can have others
        if (entry.key().left(slash) != group) {
            group = entry.key().left(slash);
            if (!content.isEmpty()) content += lineEnd;
            content += '[' + *group + ']' + lineEnd;
        }
        content += entry.key().mid(slash + 1) + '=' + entry.value() + lineEnd;
    }
    return content;
}

bool IniReader::read(const char *bytes, qint64 count)
{
    while (count > 0 && m_textLeft > 0) {
        const auto *end =
            static_cast<const char *>(std::memchr(bytes, '\n', static_cast<std::size_t>(count)));
        const qint64 length = end ? end - bytes : count;
        m_tooLong = m_tooLong || m_line.size() + length > longestLine;
        if (m_tooLong)
            m_line.clear();
        else
            m_line.append(bytes, static_cast<int>(length));
        if (end) takeLine();
        bytes += length + (end ? 1 : 0);
        count -= length + (end ? 1 : 0);
    }
    if (m_textLeft <= 0) m_damaged = true;
    return m_textLeft > 0;
}

void IniReader::finish()
{
    if (m_line.isEmpty() && !m_tooLong) return;
    m_damaged = true; // the last line has no line end, so its value can be incomplete
    takeLine();
}

void IniReader::takeLine()
{
    QByteArray line = std::exchange(m_line, QByteArray());
    const bool tooLong = std::exchange(m_tooLong, false);
    const bool first = std::exchange(m_first, false);
    m_textLeft -= line.size() + 1;
    if (first && line.startsWith("\xEF\xBB\xBF")) line.remove(0, 3);
    if (line.endsWith('\r')) line.chop(1);
    const bool control = std::any_of(line.begin(), line.end(), isControl);
    const bool latin1 = !isAscii(line) && !isUtf8(line);
    if (latin1) line = QString::fromLatin1(line).toUtf8();
    line = line.trimmed();
    const bool header = line.startsWith('[');
    m_damaged = m_damaged || tooLong || control || latin1;
    if (tooLong || control) {
        if (header) m_group = QByteArray();
        return;
    }
    if (line.isEmpty() || line.startsWith(';') || line.startsWith('#')) return;
    header ? takeHeader(line) : takeSetting(line);
}

void IniReader::takeHeader(const QByteArray &line)
{
    const int end = line.indexOf(']');
    m_damaged = m_damaged || end < 0;
    // Values below an unreadable header are dropped, because their group is unknown.
    m_group = end < 0 ? QByteArray() : line.mid(1, end - 1).trimmed();
}

void IniReader::takeSetting(const QByteArray &line)
{
    const int equals = line.indexOf('=');
    const QByteArray key = line.left(equals).trimmed();
    const QByteArray rest = line.mid(equals + 1);
    const int end = findUnquoted(rest, ';'); // the rest of the line is a comment
    const bool lost =
        equals <= 0 || key.isEmpty() || key.contains('/') || end < 0 || m_group.isNull();
    m_damaged = m_damaged || lost;
    if (lost) return;
    const QByteArray value = rest.left(end).trimmed();
    m_entries.insert(m_group + '/' + key, value.isEmpty() ? QByteArray("") : value);
}

} // namespace storage
