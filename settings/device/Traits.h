#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/objects/DeviceTraits.h"

namespace settings {

// Sets the trait of that name, as people write it: "appearance dark", "screen 390x844@3". No text
// where that was done; else what is wrong and what is allowed, and the traits are as they were.
std::optional<std::string> changeTrait(platform::DeviceTraits& traits, std::string_view name,
                                       std::string_view value);

}  // namespace settings
