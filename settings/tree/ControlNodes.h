#pragma once

#include <nlohmann/json.hpp>

namespace platform {
class UIView;
}

namespace settings {

class NodeWriter;

// The part of a view's node that depends on what kind of view it is.
struct ControlMembers {
  const char* kind = "view";
  nlohmann::json members = nlohmann::json::object();
  bool leaf = true;  // what is inside is not shown by itself
};

ControlMembers controlMembers(NodeWriter& writer, const platform::UIView& view);

}  // namespace settings
