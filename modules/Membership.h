#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "platform/foundation/values/Value.h"

namespace zentrova {

// A set of values for a query over a collection. It is built in one pass, so that a query over many
// modules stays linear.
class Membership {
 public:
  explicit Membership(std::span<const platform::Value> members);
  void add(const platform::Value& member);
  bool contains(const platform::Value& value) const;

 private:
  struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const noexcept {
      return std::hash<std::string_view>()(text);
    }
  };

  std::unordered_set<std::string, TextHash, std::equal_to<>> _texts;
  std::vector<platform::Value> _others;  // not strings; a damaged file may hold them
};

}  // namespace zentrova
