#include "app/helplinks.h"

#include "common/constants.h"

namespace {

QUrl pageOf(const QLocale &language, const char *path)
{
    const bool japanese = language.language() == QLocale::Japanese;
    const char *site = japanese ? constants::websiteJapan : constants::website;
    return QUrl(QLatin1String(site) + QLatin1String(path));
}

} // namespace

QUrl helplinks::faqs(const QLocale &language)
{
    return pageOf(language, "/product/tamber/faqs");
}

QUrl helplinks::productTop(const QLocale &language)
{
    return pageOf(language, "/product/tamber/top");
}
