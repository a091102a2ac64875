#pragma once

#include <QString>

/// Version numbers of the panel and the firmware. Pure functions; any thread.
namespace update {

/// Returns "4.01" for 4 and 1. The minor number has at least two digits.
QString versionText(int major, int minor);

/// Returns whether a published version is newer than the version in a text such as "4.00 0064" or
/// "4.01". A text without a version counts as 0.00.
// contract: compares only the first digit of the major number and the first two digits of the minor
// number, and ignores the build.
bool isNewer(int major, int minor, const QString &than);

} // namespace update
