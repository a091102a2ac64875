#pragma once

#include <QString>

/// Shows texts of the user as they are, where Qt would read them as something else. GUI thread
/// only.
namespace plaintext {

/// Returns a text for a menu or a button, where a single "&" marks a shortcut.
QString forMenu(const QString &text);
/// Returns a text for a tool tip, where Qt shows text that looks like HTML as rich text.
QString forToolTip(const QString &text);

} // namespace plaintext
