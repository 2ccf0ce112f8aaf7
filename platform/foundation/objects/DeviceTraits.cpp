#include "platform/foundation/objects/DeviceTraits.h"

#include <tuple>

namespace platform {

bool SystemVersion::isAtLeast(int otherMajor, int otherMinor, int otherPatch) const noexcept {
  return std::tie(major, minor, patch) >= std::tie(otherMajor, otherMinor, otherPatch);
}

std::string SystemVersion::text() const {
  std::string text = std::to_string(major) + "." + std::to_string(minor);
  if (patch != 0) text += "." + std::to_string(patch);
  return text;
}

}  // namespace platform
