#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace fuzzing {

// Ends the fuzzer with a finding.
inline void require(bool holds, const std::string& what) {
  if (holds) return;
  std::fprintf(stderr, "finding: %s\n", what.c_str());
  std::abort();
}

}  // namespace fuzzing
