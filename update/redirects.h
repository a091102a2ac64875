#pragma once

class QNetworkReply;

namespace update {

/// How often a request may be led elsewhere.
constexpr int maximumRedirects = 5;

/// Ends a reply whatever it was about to bring, as an error that wasRefused() tells from a cancel.
void refuse(QNetworkReply *reply);
bool wasRefused(const QNetworkReply *reply);

/// Lets a reply of the user-verified policy be led on to allowed addresses only, and refuses it
/// where it would lead elsewhere.
void followAllowedRedirects(QNetworkReply *reply);

} // namespace update
