#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/foundation/objects/Object.h"

namespace platform {
class UIImage;
}

namespace settings {

// What a node of the tree stands for.
struct NodeTarget {
  std::string_view kind;  // the name of one of nodeKinds()
  // The view or the controller; the table of a section or row. Empty for a crash report.
  std::weak_ptr<platform::Object> object;
  std::uint64_t token = 0;  // of a section or row in its table

  template <class T>
  std::shared_ptr<T> as() const {
    return std::dynamic_pointer_cast<T>(object.lock());
  }
};

// What the nodes of one tree stand for, by their identity, and the images that it names, by hash.
struct NodeTargets {
  std::unordered_map<std::string, NodeTarget> nodes;
  std::unordered_map<std::string, std::shared_ptr<platform::UIImage>> images;
};

}  // namespace settings
