#pragma once

#include <QString>

/// The versions of the update document. Pure; any thread.
namespace update {

/// "4.01" for 4 and 1: the minor number has two digits at least.
QString versionText(int major, int minor);

/// Whether a published version is newer than another, as in "4.00 0064" or "4.01". Only the first
/// digit of the major numbers counts, and where they are equal the first two of the minor numbers;
/// builds do not. A text that is no version is older than any but 0.00.
bool isNewer(int major, int minor, const QString &than);

} // namespace update
