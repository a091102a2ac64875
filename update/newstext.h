#pragma once

#include <QString>

namespace update {

/// News of the maker as they may be shown: rich text that can neither load nor run anything.
/// Text formatting, lists, headings and links to https addresses stay; of everything else the text
/// stays without its markup. Characters that turn the direction of text go. Words that are too long
/// for a line get places to be broken at (U+200B). Empty if nothing is left to be read.
/// GUI thread only.
QString presentable(const QString &news);

} // namespace update
