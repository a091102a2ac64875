#pragma once

class QNetworkReply;
class QObject;
class QUrl;

/// The requests of the update checker. GUI thread only.
namespace update {

/// Requests an address, which must be allowed. Follows at most five redirects to allowed addresses
/// and refuses the reply at any other redirect. Asks for a body that is not compressed: its length
/// is that of the file, and a small compressed body could unpack to any size.
/// @param owner of the reply and of what the request needs; both end with it, or when the reply is
///              deleted
QNetworkReply *get(const QUrl &address, QObject *owner);

/// Returns whether the body of a reply is not compressed.
bool isPlain(const QNetworkReply *reply);

/// Aborts a reply and marks it as refused, to distinguish it from one that the user cancelled.
void refuse(QNetworkReply *reply);
/// Returns whether refuse() was called for a reply.
bool wasRefused(const QNetworkReply *reply);

} // namespace update
