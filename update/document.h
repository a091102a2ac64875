#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <optional>

/// The update information document of the maker's server. Its content is not trusted. Pure
/// functions and values; any thread.
namespace update {

/// A published version of the panel or of the firmware.
struct Release
{
    int major = 0;         ///< 0 if the document does not name it
    int minor = 0;         ///< 0 if the document does not name it
    QString japanese;      ///< download address for a Japanese system, as in the document
    QString international; ///< download address for all other systems, as in the document

    QString address(bool inJapanese) const { return inJapanese ? japanese : international; }
};

struct Document
{
    Release software;
    Release firmware;
    QString news; ///< at most 4000 characters and an ellipsis; can contain markup
};

/// Returns the content of a document, or nothing if the text is not a JSON object. A value that is
/// missing or has the wrong type becomes 0 or "".
// contract: the keys of the document. Its other keys, such as "Tamber_version1", are ignored.
std::optional<Document> parse(const QByteArray &json);

/// Converts a text to an address. Removes the blanks around the address and encodes those in it.
QUrl addressOf(const QString &text);

/// Returns whether an address may be fetched: https to any host, or http to the loopback address.
bool isAllowed(const QUrl &address);

} // namespace update
