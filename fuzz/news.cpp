/// The maker's news: the rich text that is shown loads nothing and links only to https addresses.

#include "check.h"
#include "update/newstext.h"

#include <QGuiApplication>
#include <QTextBlock>
#include <QTextDocument>
#include <QUrl>

#include <cstddef>
#include <cstdint>

namespace {

/// A document that loads nothing and tells what was asked for.
class ClosedDocument : public QTextDocument
{
protected:
    QVariant loadResource(int, const QUrl &) override
    {
        FUZZ_CHECK(!"nothing may be loaded");
        return {};
    }
};

void checkFormats(const QTextDocument &document)
{
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextCharFormat format = part.fragment().charFormat();
            FUZZ_CHECK(!format.isImageFormat());
            if (!format.isAnchor() || format.anchorHref().isEmpty()) continue;
            FUZZ_CHECK(QUrl(format.anchorHref()).scheme() == QLatin1String("https"));
        }
}

} // namespace

/// The font library keeps its caches until the process ends.
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libfontconfig";
}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Never deleted: the offscreen platform leaks when it ends.
    static auto *const application = new QGuiApplication(*argc, *argv);
    FUZZ_CHECK(application);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const QString shown = update::presentable(QString::fromUtf8(bytes));
    ClosedDocument document;
    document.setHtml(shown);
    checkFormats(document);
    return 0;
}
