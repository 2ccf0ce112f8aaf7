#include "platform/foundation/objects/Bridge.h"

namespace platform::bridge {

const Value& argumentAt(std::span<const Value> arguments, std::size_t index) noexcept {
  static const Value none;
  return index < arguments.size() ? arguments[index] : none;
}

}  // namespace platform::bridge
