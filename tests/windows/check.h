#pragma once

#include <cstdio>

/// A test for a console, without any toolkit: each check prints a line, main returns failures().
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
