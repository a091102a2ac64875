#include "update/document.h"

#include <QHostAddress>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace {

constexpr int longestNews = 4000; // characters

int number(const QJsonObject &object, const QString &key)
{
    return qMax(object.value(key).toInt(), 0);
}

update::Release release(const QJsonObject &object, const QString &versions, const QString &urls)
{
    return {
        number(object, versions + QStringLiteral("_version_major")),
        number(object, versions + QStringLiteral("_version_minor")),
        object.value(urls + QStringLiteral("_url_ja")).toString(),
        object.value(urls + QStringLiteral("_url_en")).toString()};
}

/// Cut here, so that what is shown, ticked and compared is the same.
QString news(const QJsonObject &object)
{
    const QString all = object.value(QStringLiteral("messages")).toString();
    return all.size() > longestNews ? all.left(longestNews) + QChar(0x2026) : all;
}

} // namespace

std::optional<update::Document> update::parse(const QByteArray &json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject()) return std::nullopt;
    const QJsonObject object = document.object();
    const QString software = QStringLiteral("windows_software");
    return Document{
        release(object, software, software),
        release(object, QStringLiteral("firmware"), QStringLiteral("windows_firmware")),
        news(object)};
}

bool update::isAllowed(const QUrl &address)
{
    if (!address.isValid() || address.host().isEmpty()) return false;
    if (address.scheme() == QLatin1String("https")) return true;
    const bool loopback = QHostAddress(address.host()).isLoopback();
    return address.scheme() == QLatin1String("http") && loopback;
}

QString update::presentable(const QString &news)
{
    QString text = news.toHtmlEscaped();
    static const QRegularExpression direction(
        QStringLiteral("[\\x{202A}-\\x{202E}\\x{2066}-\\x{2069}]"));
    text.remove(direction);
    static const QRegularExpression mark(QStringLiteral("&lt;(/?(?:b|i|u|p|br))\\s*/?&gt;"));
    text.replace(mark, QStringLiteral("<\\1>"));
    static const QRegularExpression link(
        QStringLiteral("&lt;a href=&quot;(https://[^\\s<>\"']+?)&quot;&gt;(.*?)&lt;/a&gt;"),
        QRegularExpression::DotMatchesEverythingOption);
    text.replace(link, QStringLiteral("<a href=\"\\1\">\\2</a>"));
    text.replace(QLatin1Char('\n'), QLatin1String("<br>"));
    // A place to break a word that no line holds; not within a tag.
    static const QRegularExpression longWord(
        QStringLiteral("((?:&[a-z]+;|[^<>\\s&]){24})(?![^<>]*>)"));
    text.replace(longWord, QStringLiteral("\\1") + QChar(0x200B));
    return text;
}
