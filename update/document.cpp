#include "update/document.h"

#include <QHostAddress>
#include <QJsonDocument>
#include <QJsonObject>

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

/// Returns the news, cut to the maximum length. Cutting them here means that the same text is
/// shown, stored and compared.
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

QUrl update::addressOf(const QString &text)
{
    return QUrl(text.trimmed(), QUrl::TolerantMode);
}

bool update::isAllowed(const QUrl &address)
{
    if (!address.isValid() || address.host().isEmpty()) return false;
    if (address.scheme() == QLatin1String("https")) return true;
    const bool loopback = QHostAddress(address.host()).isLoopback();
    return address.scheme() == QLatin1String("http") && loopback;
}
