#pragma once

#include <QLocale>
#include <QUrl>

/// Addresses of the maker's web pages for this device. They lead to the Japanese site if the
/// language is Japanese, else to the international site. Pure functions; any thread.
namespace helplinks {

QUrl faqs(const QLocale &language);
QUrl productTop(const QLocale &language);

} // namespace helplinks
