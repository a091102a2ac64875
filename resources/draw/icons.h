#pragma once

#include <QString>

/// The program's icon in the sizes that desktops need.
namespace icons {

/// Writes "tamber-16.png" to "tamber-256.png", "tamber.ico" with the same pictures, and
/// "installer.bmp" for the Windows installer into `folder`. Returns false if a file cannot be
/// written.
bool write(const QString &folder);

} // namespace icons
