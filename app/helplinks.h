#pragma once

#include <QLocale>
#include <QUrl>

/// The maker's pages for this model: on the Japanese site for a Japanese system, else on the
/// international one.
namespace helplinks {

QUrl faqs(const QLocale &language);
QUrl productTop(const QLocale &language);

} // namespace helplinks
