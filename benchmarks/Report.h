#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "benchmarks/Timing.h"

namespace benchmarks {

inline std::string inUnits(double seconds) {
  char text[32];
  if (seconds < 1e-3) {
    std::snprintf(text, sizeof text, "%9.2f us", seconds * 1e6);
  } else {
    std::snprintf(text, sizeof text, "%9.3f ms", seconds * 1e3);
  }
  return text;
}

// Prints a group: the fastest and the median slice of every contender, and the ratio of its fastest
// slice to that of the first contender.
inline void report(std::string_view title, const std::vector<Contender>& contenders,
                   const std::vector<Timing>& timings) {
  std::printf("\n%.*s\n", static_cast<int>(title.size()), title.data());
  for (std::size_t i = 0; i < contenders.size(); ++i) {
    std::printf("  %-34s best %s  median %s  x%.2f\n", contenders[i].name.c_str(),
                inUnits(timings[i].best).c_str(), inUnits(timings[i].median).c_str(),
                timings[i].best / timings[0].best);
  }
  std::fflush(stdout);
}

inline void measure(std::string_view title, const std::vector<Contender>& contenders,
                    double secondsEach = 1.0) {
  report(title, contenders, race(contenders, secondsEach));
}

}  // namespace benchmarks
