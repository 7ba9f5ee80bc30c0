#pragma once
// A failed property ends the fuzz run with a message and a crash that
// libFuzzer records as a finding.
#include <cstdio>
#include <cstdlib>

#define FUZZ_CHECK(condition)                                                    \
  do {                                                                            \
    if (!(condition)) {                                                           \
      std::fprintf(stderr, "property failed: %s (%s:%d)\n", #condition, __FILE__, __LINE__); \
      std::abort();                                                               \
    }                                                                             \
  } while (0)
