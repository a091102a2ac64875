#pragma once

class QNetworkReply;
class QNetworkRequest;

/// What every request of the update checker keeps to.
namespace update {

/// Asks for the bytes as they are: what the server compresses would be of any size when it is
/// unpacked.
void askForPlainBytes(QNetworkRequest &request);
/// Whether the body of a reply is not compressed.
bool isPlain(const QNetworkReply *reply);

/// How often a request may be led elsewhere.
constexpr int maximumRedirects = 5;

/// Ends a reply whatever it was about to bring, as an error that wasRefused() tells from a cancel.
void refuse(QNetworkReply *reply);
bool wasRefused(const QNetworkReply *reply);

/// Lets a reply of the user-verified policy be led on to allowed addresses only, and refuses it
/// where it would lead elsewhere.
void followAllowedRedirects(QNetworkReply *reply);

} // namespace update
