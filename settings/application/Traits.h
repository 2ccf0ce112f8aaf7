#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/DeviceTraits.h"

namespace settings {

// One trait as people write it: "appearance dark", "screen 390x844@3".
struct TraitHelp {
  std::string name;
  std::string values;  // what is accepted, with an example
};

// Every trait that `changeTrait` takes.
const std::vector<TraitHelp>& traitHelp();

// Sets the trait of that name. No text where that was done; else what is wrong and what is
// allowed, and the traits are as they were.
std::optional<std::string> changeTrait(platform::DeviceTraits& traits, std::string_view name,
                                       std::string_view value);

}  // namespace settings
