/// The update document, versions and addresses: numbers and texts keep their limits, and only
/// addresses of the web may be fetched.

#include "check.h"
#include "update/document.h"
#include "update/version.h"

#include <QUrl>

#include <cstddef>
#include <cstdint>

namespace {

constexpr int mostNews = 4000; // characters, and an ellipsis

void checkAddress(const QString &text)
{
    const QUrl address = update::addressOf(text);
    if (!update::isAllowed(address)) return;
    const bool isSecure = address.scheme() == QLatin1String("https");
    FUZZ_CHECK(isSecure || address.scheme() == QLatin1String("http"));
    FUZZ_CHECK(!address.host().isEmpty());
}

void checkRelease(const update::Release &release, const QString &version)
{
    checkAddress(release.japanese);
    checkAddress(release.international);
    const QString own = update::versionText(release.major, release.minor);
    FUZZ_CHECK(!own.isEmpty());
    update::isNewer(release.major, release.minor, version);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const QString text = QString::fromUtf8(bytes);
    checkAddress(text);
    update::isNewer(4, 1, text);
    const std::optional<update::Document> document = update::parse(bytes);
    if (!document) return 0;
    checkRelease(document->software, document->news);
    checkRelease(document->firmware, document->news);
    FUZZ_CHECK(document->news.size() <= mostNews + 1);
    return 0;
}
