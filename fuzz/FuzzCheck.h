// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <cstdlib>

// A property the fuzzed code must keep; libFuzzer reports the abort and
// keeps the input that broke it.
#define FUZZ_CHECK(condition)                                                                      \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__, __LINE__, #condition);     \
            std::abort();                                                                          \
        }                                                                                          \
    } while (false)

// Everything here reads local time; a zone with clock changes.
inline void useBerlinTime()
{
    setenv("TZ", "Europe/Berlin", 1);
}
