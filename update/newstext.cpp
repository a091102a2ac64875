#include "update/newstext.h"

#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>
#include <QUrl>

namespace {

constexpr int longWord = 24; // this many characters fit into every line

/// A document that does not load the resources named in its text.
class ClosedDocument final : public QTextDocument
{
    QVariant loadResource(int, const QUrl &) override { return QVariant(); }
};

QString withBreaks(QString text)
{
    static const QRegularExpression direction(
        QStringLiteral("[\\x{200E}\\x{200F}\\x{202A}-\\x{202E}\\x{2066}-\\x{2069}]"));
    static const QRegularExpression word(QStringLiteral("(\\S{%1})").arg(longWord));
    return text.remove(direction).replace(word, QStringLiteral("\\1") + QChar(0x200B));
}

/// Returns a piece of text as rich text that is generated from its format.
QString written(const QTextFragment &fragment)
{
    const QTextCharFormat format = fragment.charFormat();
    if (format.isImageFormat()) return QString();
    QString text = withBreaks(fragment.text()).toHtmlEscaped();
    text.replace(QChar(QChar::LineSeparator), QLatin1String("<br>"));
    const auto wrap = [&text](bool wanted, const char *tag) {
        if (wanted) text = QStringLiteral("<%1>%2</%1>").arg(QLatin1String(tag), text);
    };
    wrap(format.fontWeight() >= QFont::DemiBold, "b");
    wrap(format.fontItalic(), "i");
    wrap(format.fontStrikeOut(), "s");
    wrap(format.verticalAlignment() == QTextCharFormat::AlignSuperScript, "sup");
    wrap(format.verticalAlignment() == QTextCharFormat::AlignSubScript, "sub");
    const QUrl link(format.anchorHref(), QUrl::StrictMode);
    const bool linked = format.isAnchor() && link.scheme() == QLatin1String("https");
    wrap(!linked && format.fontUnderline() && !format.isAnchor(), "u");
    const int size = format.intProperty(QTextFormat::FontSizeAdjustment);
    if (size != 0)
        text = QStringLiteral("<font size=\"%1%2\">%3</font>")
                   .arg(size > 0 ? QStringLiteral("+") : QString())
                   .arg(size)
                   .arg(text);
    if (linked)
        text = QStringLiteral("<a href=\"%1\">%2</a>")
                   .arg(link.toString(QUrl::FullyEncoded).toHtmlEscaped(), text);
    return text;
}

QString content(const QTextBlock &block)
{
    QString text;
    for (auto fragment = block.begin(); !fragment.atEnd(); ++fragment)
        text += written(fragment.fragment());
    return text;
}

/// Generates rich text from the blocks of a document. Joins the items of a list.
class Writer
{
public:
    void add(const QTextBlock &block)
    {
        const QTextList *list = block.textList();
        if (list != m_list) closeList();
        if (list && !m_list) openList(list);
        const int level = block.blockFormat().headingLevel();
        if (list)
            put("li", block);
        else if (level > 0)
            put(("h" + QByteArray::number(level)).constData(), block);
        else
            put("p", block);
    }
    QString finish()
    {
        closeList();
        return m_text;
    }

private:
    void put(const char *tag, const QTextBlock &block)
    {
        const QString text = content(block);
        if (text.isEmpty()) return;
        m_text += QStringLiteral("<%1>%2</%1>").arg(QLatin1String(tag), text);
    }
    void openList(const QTextList *list)
    {
        m_list = list;
        m_tag = list->format().style() <= QTextListFormat::ListDecimal ? "ol" : "ul";
        m_text += QStringLiteral("<%1>").arg(QLatin1String(m_tag));
    }
    void closeList()
    {
        if (m_list) m_text += QStringLiteral("</%1>").arg(QLatin1String(m_tag));
        m_list = nullptr;
    }

    QString m_text;
    const QTextList *m_list = nullptr;
    const char *m_tag = "";
};

} // namespace

QString update::presentable(const QString &news)
{
    static const QRegularExpression block(
        QStringLiteral("<\\s*(?:p|br|ul|ol|li|h[1-6]|div|table)\\b"),
        QRegularExpression::CaseInsensitiveOption);
    ClosedDocument document;
    QString text = news;
    // News without block markup are plain lines; the line breaks must stay.
    if (!text.contains(block)) text.replace(QLatin1Char('\n'), QLatin1String("<br>"));
    document.setHtml(text);
    if (document.toPlainText().trimmed().isEmpty()) return QString();
    Writer writer;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        writer.add(block);
    return writer.finish();
}
