#pragma once

#include <QString>

/// The program's icon in the sizes that desktops ask for.
namespace icons {

/// Writes "tamber-16.png" to "tamber-256.png", "tamber.ico" with the same pictures, and
/// "installer.bmp" for the Windows installer into `folder`. False when a file cannot be written.
bool write(const QString &folder);

} // namespace icons
