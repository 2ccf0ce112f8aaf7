#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace fuzzing {

// Aborts the fuzzer with a message if the condition is false.
inline void require(bool holds, const std::string& what) {
  if (holds) return;
  std::fprintf(stderr, "finding: %s\n", what.c_str());
  std::abort();
}

}  // namespace fuzzing
