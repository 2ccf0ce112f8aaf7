#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/foundation/objects/Object.h"

namespace platform {

enum class UINavigationItemLargeTitleDisplayMode : std::uint8_t { automatic, always, never };

// What a page shows in a navigation bar. Threads: main.
class UINavigationItem : public Object {
  PLATFORM_CLASS(UINavigationItem)

 public:
  const std::optional<std::string>& title() const noexcept { return _title; }
  void setTitle(std::optional<std::string> title);
  UINavigationItemLargeTitleDisplayMode largeTitleDisplayMode() const noexcept { return _mode; }
  void setLargeTitleDisplayMode(UINavigationItemLargeTitleDisplayMode mode);

 private:
  std::optional<std::string> _title;
  UINavigationItemLargeTitleDisplayMode _mode = UINavigationItemLargeTitleDisplayMode::automatic;
};

}  // namespace platform
