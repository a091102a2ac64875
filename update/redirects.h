#pragma once

class QNetworkReply;

namespace update {

/// How often a request may be led elsewhere.
constexpr int maximumRedirects = 5;

/// Lets a reply of the user-verified policy be led on to allowed addresses only; one that would
/// lead elsewhere ends at once as an error that wasRefused() tells from a cancel.
void followAllowedRedirects(QNetworkReply *reply);
bool wasRefused(const QNetworkReply *reply);

} // namespace update
