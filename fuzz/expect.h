// What a fuzz target demands of the code.
#ifndef OLH_FUZZ_EXPECT_H
#define OLH_FUZZ_EXPECT_H

#include <cstdio>
#include <cstdlib>

// Stops the run and keeps the input when a promise is broken.
inline void expect(bool promise, const char* broken) {
  if (promise) return;
  std::fprintf(stderr, "broken promise: %s\n", broken);
  std::abort();
}

#endif
