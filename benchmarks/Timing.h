#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace benchmarks {

inline double now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// The times of a contender, in seconds per call.
struct Timing {
  double best = 0.0;
  double median = 0.0;
};

// A function to measure.
struct Contender {
  std::string name;
  std::function<void()> run;
};

// Runs the contenders alternately, so that other work of the machine affects all of them equally:
// each round runs every contender for a slice of the time. `best` is the fastest slice, `median`
// the median one.
inline std::vector<Timing> race(const std::vector<Contender>& contenders, double secondsEach,
                                std::size_t rounds = 15) {
  std::vector<std::vector<double>> slices(contenders.size());
  for (std::size_t round = 0; round < rounds; ++round) {
    for (std::size_t i = 0; i < contenders.size(); ++i) {
      const double start = now();
      const double end = start + secondsEach / static_cast<double>(rounds);
      std::size_t calls = 0;
      double last = start;
      while (calls == 0 || last < end) {
        contenders[i].run();
        ++calls;
        last = now();
      }
      slices[i].push_back((last - start) / static_cast<double>(calls));
    }
  }
  std::vector<Timing> timings;
  for (std::vector<double>& slice : slices) {
    std::sort(slice.begin(), slice.end());
    timings.push_back({slice.front(), slice[slice.size() / 2]});
  }
  return timings;
}

// Prevents the compiler from removing unused results.
template <class T>
void keep(const T& value) {
  asm volatile("" : : "r,m"(&value) : "memory");
}

}  // namespace benchmarks
