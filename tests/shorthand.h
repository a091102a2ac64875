#pragma once

#include <QString>

/// A string literal in UTF-8.
inline QString operator""_s(const char *text, std::size_t length)
{
    return QString::fromUtf8(text, static_cast<int>(length));
}
