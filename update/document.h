#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <optional>

/// What the maker's service says of updates. Nothing in it is trusted. Pure; any thread.
namespace update {

/// A program or firmware that is published.
struct Release
{
    int major = 0; ///< 0 and 0 when the document does not say
    int minor = 0;
    QString japanese; ///< address of its download, as the document has it
    QString international;

    QString address(bool inJapanese) const { return inJapanese ? japanese : international; }
};

struct Document
{
    Release software;
    Release firmware;
    QString news;
};

/// None when the text is no JSON object. What is missing, or of another type than it should be,
/// takes its default: 0 or "". News are cut at 4000 characters.
std::optional<Document> parse(const QByteArray &json);

/// The address that a text stands for. Blanks in it are encoded, those around it are left out.
QUrl addressOf(const QString &text);

/// Whether an address may be fetched: https, or http on this machine's own loopback address.
bool isAllowed(const QUrl &address);

} // namespace update
