#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/foundation/values/Collections.h"

// The property lists that are measured, made from a seed, so that every run has the same.
namespace benchmarks {

struct Sample {
  std::string name;
  platform::Value value;
  std::string xml;
  std::string binary;
};

// 60 keys as a settings file has them, about 4 KB.
platform::Dictionary smallPreferences();
// The same with one data value of 4 MiB.
platform::Dictionary imagePreferences();
// That many keys at the root.
platform::Dictionary widePreferences(std::size_t keys);
// That many dictionaries in one another.
platform::Value deepPreferences(std::size_t levels);

// small, image, wide (200,000 keys) and deep (500 levels) in both forms.
std::vector<Sample> samples();

}  // namespace benchmarks
