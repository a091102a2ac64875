#include "update/request.h"

#include "update/document.h"

#include <QLoggingCategory>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace {

Q_LOGGING_CATEGORY(log, "tamber.update")

constexpr char refused[] = "refused"; // property of a reply
constexpr int mostRedirects = 5;

void followAllowedRedirects(QNetworkReply *reply)
{
    QObject::connect(reply, &QNetworkReply::redirected, reply, [reply](const QUrl &to) {
        if (update::isAllowed(to)) {
            emit reply->redirectAllowed();
            return;
        }
        qCWarning(log) << "redirect to an address that is not allowed:" << to.toString();
        update::refuse(reply);
    });
}

} // namespace

QNetworkReply *update::get(const QUrl &address, QObject *owner)
{
    QNetworkRequest request(address);
    request.setAttribute(
        QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::UserVerifiedRedirectPolicy);
    request.setMaximumRedirectsAllowed(mostRedirects);
    request.setRawHeader("Accept-Encoding", "identity");
    // Requests are rare. Between them nothing of the network stays in memory.
    auto *network = new QNetworkAccessManager(owner);
    QNetworkReply *reply = network->get(request);
    QObject::connect(reply, &QObject::destroyed, network, &QObject::deleteLater);
    followAllowedRedirects(reply);
    return reply;
}

bool update::isPlain(const QNetworkReply *reply)
{
    const QByteArray encoding = reply->rawHeader("Content-Encoding").trimmed().toLower();
    return encoding.isEmpty() || encoding == "identity";
}

void update::refuse(QNetworkReply *reply)
{
    reply->setProperty(refused, true);
    QMetaObject::invokeMethod(reply, &QNetworkReply::abort, Qt::QueuedConnection);
}

bool update::wasRefused(const QNetworkReply *reply)
{
    return reply->property(refused).toBool();
}
