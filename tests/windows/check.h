#pragma once

#include <cstdio>

/// A console test without a toolkit: each check prints a line, and main returns failures().
namespace check {

inline int &failures()
{
    static int count = 0;
    return count;
}

inline void report(bool good, const char *what, int line)
{
    std::printf("%s: %s (line %d)\n", good ? "ok" : "FAILED", what, line);
    std::fflush(stdout);
    if (!good) ++failures();
}

} // namespace check

#define CHECK(condition) check::report((condition), #condition, __LINE__)
