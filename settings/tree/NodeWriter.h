#pragma once

#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "settings/tree/NodeTarget.h"

namespace platform {
class UIColor;
class UIView;
}  // namespace platform

namespace settings {

nlohmann::json colorJson(const platform::UIColor& color);

// Collects the nodes of one tree. A function that adds a node gives its identity.
class NodeWriter {
 public:
  // Identities are the platform's, counted on from `base`, so that no process uses those of an
  // earlier one again.
  explicit NodeWriter(std::uint64_t base) : _base(base) {}

  std::string identity(std::uint64_t token);
  // Adds the node, whose children are added already.
  std::string add(std::uint64_t token, NodeTarget target, nlohmann::json node,
                  const std::vector<std::string>& children);
  // The view with everything below it. `role` says what it is to its cell; may be empty.
  std::string addView(const std::shared_ptr<platform::UIView>& view, const char* role = "");
  // The members that every view has.
  nlohmann::json viewMembers(const platform::UIView& view, const char* kind);
  nlohmann::json imageJson(const std::shared_ptr<platform::UIImage>& image);
  std::vector<std::string> addSubviews(const platform::UIView& view);

  nlohmann::json& nodes() noexcept { return _nodes; }
  NodeTargets& targets() noexcept { return _targets; }
  std::uint64_t largest() const noexcept { return _largest; }

 private:
  std::uint64_t _base;
  std::uint64_t _largest = 0;
  nlohmann::json _nodes = nlohmann::json::object();
  NodeTargets _targets;
};

}  // namespace settings
