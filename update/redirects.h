#pragma once

class QNetworkReply;
class QNetworkRequest;

/// Rules for every request of the update checker. GUI thread only.
namespace update {

/// Asks the server not to compress the body, because a small compressed body could unpack to any
/// size.
void askForPlainBytes(QNetworkRequest &request);
/// Returns whether the body of a reply is not compressed.
bool isPlain(const QNetworkReply *reply);

/// The largest number of redirects that a request follows.
constexpr int maximumRedirects = 5;

/// Aborts a reply and marks it as refused, to distinguish it from one that the user cancelled.
void refuse(QNetworkReply *reply);
/// Returns whether refuse() was called for a reply.
bool wasRefused(const QNetworkReply *reply);

/// Follows redirects to allowed addresses and refuses the reply at any other redirect. The request
/// must have UserVerifiedRedirectPolicy.
void followAllowedRedirects(QNetworkReply *reply);

} // namespace update
