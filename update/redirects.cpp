#include "update/redirects.h"

#include "update/document.h"

#include <QLoggingCategory>
#include <QNetworkReply>

namespace {

Q_LOGGING_CATEGORY(log, "tamber.update")

constexpr char refused[] = "refused"; // property of a reply

} // namespace

void update::askForPlainBytes(QNetworkRequest &request)
{
    request.setRawHeader("Accept-Encoding", "identity");
}

bool update::isPlain(const QNetworkReply *reply)
{
    const QByteArray encoding = reply->rawHeader("Content-Encoding").trimmed().toLower();
    return encoding.isEmpty() || encoding == "identity";
}

void update::followAllowedRedirects(QNetworkReply *reply)
{
    QObject::connect(reply, &QNetworkReply::redirected, reply, [reply](const QUrl &to) {
        if (isAllowed(to)) {
            emit reply->redirectAllowed();
            return;
        }
        qCWarning(log) << "redirect to an address that is not allowed:" << to.toString();
        refuse(reply);
    });
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
