#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the program if a condition does not hold, so that the fuzzer keeps the input.
#define FUZZ_CHECK(condition)                                                                      \
    do {                                                                                           \
        if (condition) break;                                                                      \
        std::fprintf(stderr, "%s:%d: not true: %s\n", __FILE__, __LINE__, #condition);             \
        std::abort();                                                                              \
    } while (false)
