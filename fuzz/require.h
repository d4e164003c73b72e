#pragma once

#include <cstdio>
#include <cstdlib>

namespace horalo {

// Stops the fuzzer at an input that breaks a promise; `promise` says which.
inline void require(bool kept, const char* promise) {
  if (kept) return;
  std::fprintf(stderr, "Broken promise: %s\n", promise);
  std::abort();
}

}  // namespace horalo
