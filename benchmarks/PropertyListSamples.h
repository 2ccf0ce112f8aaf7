#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/foundation/values/Collections.h"

// The measured property lists. They are made from a seed and thus the same in every run.
namespace benchmarks {

struct Sample {
  std::string name;
  platform::Value value;
  std::string xml;
  std::string binary;
};

// 60 keys as in a settings file, about 4 KB.
platform::Dictionary smallPreferences();
// The small preferences with an additional data value of 4 MiB.
platform::Dictionary imagePreferences();
// The given number of keys at the root.
platform::Dictionary widePreferences(std::size_t keys);
// The given number of nested dictionaries.
platform::Value deepPreferences(std::size_t levels);

// Returns small, image, wide (200,000 keys) and deep (500 levels) in both forms.
std::vector<Sample> samples();

}  // namespace benchmarks
