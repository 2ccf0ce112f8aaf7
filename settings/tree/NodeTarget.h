#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

#include "platform/foundation/objects/Object.h"

namespace platform {
class UIImage;
}

namespace settings {

// What a node of the tree stands for.
enum class NodeKind : std::uint8_t {
  window,
  navigation,
  page,
  table,
  section,
  row,
  view,  // any other view: a control, a label, a picture
  alert,
  colorPicker,
  imagePicker,
  crash,
};

struct NodeTarget {
  NodeKind kind = NodeKind::view;
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
