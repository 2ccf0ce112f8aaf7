#pragma once

#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/tree/NodeTarget.h"

namespace platform {
class UIColor;
class UIView;
class UIViewController;
}  // namespace platform

namespace settings {

class KindTable;
class NodeSubject;
class PhotoLibrary;
struct NodeKind;

using NodeIdentities = std::vector<std::string>;

nlohmann::json colorJson(const platform::UIColor& color);

// Collects the nodes of one tree; each kind writes its own nodes. A function that adds a node
// returns its identity.
class NodeWriter {
 public:
  // Identities are the platform's, counted on from `base`, so that no process uses those of an
  // earlier one again. The kinds and the library must outlive the writer; the library may be null
  // where no page is shown.
  NodeWriter(const KindTable& kinds, PhotoLibrary* photos, std::uint64_t base)
      : _kinds(kinds), _photos(photos), _base(base) {}

  // The view with everything below it. `role` says what it is to its cell; may be empty.
  std::string addView(const std::shared_ptr<platform::UIView>& view, std::string_view role = {});
  std::string addController(const std::shared_ptr<platform::UIViewController>& controller);
  NodeIdentities addSubviews(const platform::UIView& view);
  // A view that another node shows as that kind; `children` where they are not the kind's own.
  std::string addViewAs(std::string_view kind, const std::shared_ptr<platform::UIView>& view,
                        std::string_view role = {},
                        std::optional<NodeIdentities> children = std::nullopt);
  // Adds a part that is not an object. Its identifier in the owner, if it has one, finds it again.
  std::string addPart(std::string_view kind, const NodeSubject& part, std::uint64_t identifier,
                      const std::shared_ptr<platform::Object>& owner = nullptr);

  // Adds the window before there is one.
  std::string addEmptyWindow(const NodeIdentities& children);

  // Returns the node without its children. Adds only the images that it names.
  nlohmann::json node(const NodeKind& kind, const NodeSubject& subject);
  nlohmann::json imageJson(const std::shared_ptr<platform::UIImage>& image);

  PhotoLibrary& photos() noexcept { return *_photos; }
  nlohmann::json& nodes() noexcept { return _nodes; }
  NodeTargets& targets() noexcept { return _targets; }
  std::uint64_t largest() const noexcept { return _largest; }

 private:
  std::string addView(const NodeKind& kind, const std::shared_ptr<platform::UIView>& view,
                      std::string_view role, const NodeIdentities& children);
  std::string add(std::uint64_t identifier, NodeTarget target, nlohmann::json node,
                  const NodeIdentities& children);
  NodeIdentities addChildren(const NodeKind& kind, const NodeSubject& subject);

  const KindTable& _kinds;
  PhotoLibrary* _photos;
  std::uint64_t _base;
  std::uint64_t _largest = 0;
  nlohmann::json _nodes = nlohmann::json::object();
  NodeTargets _targets;
};

}  // namespace settings
