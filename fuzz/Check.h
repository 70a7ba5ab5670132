// What must hold after every input: a claim that does not is a crash, whatever the build.
#pragma once

#include <cstdio>
#include <cstdlib>

inline void check(bool holds, const char* claim) {
  if (!holds) {
    std::fprintf(stderr, "does not hold: %s\n", claim);
    std::abort();
  }
}
