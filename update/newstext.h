#pragma once

#include <QString>

namespace update {

/// Returns the maker's news as rich text that cannot load or run anything. Keeps text formatting,
/// lists, headings and https links. Replaces all other markup by its text. Removes characters that
/// change the direction of text. Gives long words places for line breaks (U+200B). Returns an empty
/// text if there is no visible text. GUI thread only.
QString presentable(const QString &news);

} // namespace update
