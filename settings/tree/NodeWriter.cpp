#include "settings/tree/NodeWriter.h"

#include <algorithm>
#include <utility>

#include "platform/uikit/controllers/UIViewController.h"
#include "platform/uikit/images/UIImage.h"
#include "platform/uikit/views/UIView.h"
#include "settings/tree/NodeKind.h"

namespace settings {

using nlohmann::json;
using platform::UIView;

json colorJson(const platform::UIColor& color) {
  if (const auto& name = color.systemName()) return {{"name", *name}};
  const platform::ColorComponents c = color.components();
  return {{"rgba", json::array({c.red, c.green, c.blue, c.alpha})}};
}

json NodeWriter::imageJson(const std::shared_ptr<platform::UIImage>& image) {
  if (const auto& symbol = image->symbolName()) return {{"symbol", *symbol}};
  const std::string& hash = image->contentHash();
  _targets.images.insert_or_assign(hash, image);
  const platform::Size size = image->size();
  return {
      {"hash", hash}, {"width", size.width}, {"height", size.height}, {"scale", image->scale()}};
}

json NodeWriter::node(const NodeKind& kind, const NodeSubject& subject) {
  json node = {{"kind", kind.name}};
  if (const auto* object = subject.object()) node["class"] = object->className();
  if (kind.look) _kinds.everyNode().write(*this, kind.look(subject), node);
  kind.write(*this, subject, node);
  return node;
}

std::string NodeWriter::addView(const std::shared_ptr<UIView>& view, std::string_view role) {
  const NodeKind& kind = _kinds.of(*view);
  return addView(kind, view, role, addChildren(kind, *view));
}

std::string NodeWriter::addViewAs(std::string_view kind, const std::shared_ptr<UIView>& view,
                                  std::string_view role, std::optional<NodeIdentities> children) {
  const NodeKind& found = _kinds.named(kind);
  return addView(found, view, role, children ? *children : addChildren(found, *view));
}

std::string NodeWriter::addView(const NodeKind& kind, const std::shared_ptr<UIView>& view,
                                std::string_view role, const NodeIdentities& children) {
  json members = node(kind, *view);
  if (!role.empty()) members["role"] = role;
  return add(view->nodeIdentifier(), {kind.name, view, 0}, std::move(members), children);
}

std::string NodeWriter::addController(
    const std::shared_ptr<platform::UIViewController>& controller) {
  const NodeKind& kind = _kinds.of(*controller);
  const NodeIdentities children = addChildren(kind, *controller);
  return add(controller->nodeIdentifier(), {kind.name, controller, 0}, node(kind, *controller),
             children);
}

std::string NodeWriter::addPart(std::string_view kind, const NodeSubject& part,
                                std::uint64_t identifier,
                                const std::shared_ptr<platform::Object>& owner) {
  const NodeKind& found = _kinds.named(kind);
  const NodeIdentities children = addChildren(found, part);
  return add(identifier, {found.name, owner, identifier}, node(found, part), children);
}

std::string NodeWriter::addEmptyWindow(const NodeIdentities& children) {
  return add(0, {"window", {}, 0}, {{"kind", "window"}}, children);
}

NodeIdentities NodeWriter::addSubviews(const UIView& view) {
  NodeIdentities children;
  children.reserve(view.subviews().size());
  for (const auto& subview : view.subviews()) children.push_back(addView(subview));
  return children;
}

NodeIdentities NodeWriter::addChildren(const NodeKind& kind, const NodeSubject& subject) {
  return kind.addChildren ? kind.addChildren(*this, subject) : NodeIdentities();
}

std::string NodeWriter::add(std::uint64_t identifier, NodeTarget target, json node,
                            const NodeIdentities& children) {
  const std::uint64_t number = _base + identifier;
  _largest = std::max(_largest, number);
  std::string identity = std::to_string(number);
  node["children"] = children;
  _nodes[identity] = std::move(node);
  _targets.nodes.insert_or_assign(identity, std::move(target));
  return identity;
}

}  // namespace settings
