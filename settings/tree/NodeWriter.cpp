#include "settings/tree/NodeWriter.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/uikit/images/UIImage.h"
#include "platform/uikit/tables/UITableView.h"
#include "platform/uikit/views/UIView.h"
#include "settings/tree/ControlNodes.h"
#include "settings/tree/TableNodes.h"

namespace settings {

using nlohmann::json;
using platform::UIView;

namespace {

json frameJson(const platform::Rect& frame) {
  return json::array({frame.x, frame.y, frame.width, frame.height});
}

json animationJson(const platform::ViewAnimation& animation) {
  const bool fades = animation.kind == platform::ViewAnimationKind::crossDissolve;
  return {{"id", animation.identifier},
          {"duration", animation.duration},
          {"kind", fades ? "fade" : "change"}};
}

json layerJson(NodeWriter& writer, const platform::CALayer& layer) {
  json result = json::object();
  // What is no length is drawn as none, and JSON could not say it.
  const double radius = layer.cornerRadius();
  if (std::isfinite(radius) && radius != 0) result["radius"] = radius;
  if (layer.borderWidth() != 0) result["borderWidth"] = layer.borderWidth();
  if (layer.borderColor()) result["borderColor"] = colorJson(*layer.borderColor());
  if (layer.mask() && layer.mask()->contents()) {
    result["mask"] = writer.imageJson(layer.mask()->contents());
  }
  return result;
}

void addAppearance(NodeWriter& writer, const UIView& view, json& node) {
  if (view.alpha() != 1) node["alpha"] = view.alpha();
  if (view.isHidden()) node["hidden"] = true;
  if (!view.isUserInteractionEnabled()) node["interactive"] = false;
  if (view.backgroundColor()) node["background"] = colorJson(*view.backgroundColor());
  if (view.ownTintColor()) node["tint"] = colorJson(*view.ownTintColor());
  if (view.accessibilityLabel()) node["label"] = *view.accessibilityLabel();
  if (view.lastAnimation()) node["animation"] = animationJson(*view.lastAnimation());
  if (const auto& layer = view.layerIfMade()) {
    if (json members = layerJson(writer, *layer); !members.empty()) node["layer"] = members;
  }
}

}  // namespace

json colorJson(const platform::UIColor& color) {
  if (const auto& name = color.systemName()) return {{"name", *name}};
  const platform::ColorComponents c = color.components();
  return {{"rgba", json::array({c.red, c.green, c.blue, c.alpha})}};
}

std::string NodeWriter::identity(std::uint64_t token) {
  _largest = std::max(_largest, _base + token);
  return std::to_string(_base + token);
}

std::string NodeWriter::add(std::uint64_t token, NodeTarget target, json node,
                            const std::vector<std::string>& children) {
  std::string id = identity(token);
  node["children"] = children;
  _nodes[id] = std::move(node);
  _targets.nodes.insert_or_assign(id, std::move(target));
  return id;
}

json NodeWriter::imageJson(const std::shared_ptr<platform::UIImage>& image) {
  if (const auto& symbol = image->symbolName()) return {{"symbol", *symbol}};
  const std::string& hash = image->contentHash();
  _targets.images.insert_or_assign(hash, image);
  const platform::Size size = image->size();
  return {
      {"hash", hash}, {"width", size.width}, {"height", size.height}, {"scale", image->scale()}};
}

json NodeWriter::viewMembers(const UIView& view, const char* kind) {
  json node = {{"kind", kind}, {"class", view.className()}, {"frame", frameJson(view.frame())}};
  addAppearance(*this, view, node);
  return node;
}

std::vector<std::string> NodeWriter::addSubviews(const UIView& view) {
  std::vector<std::string> children;
  children.reserve(view.subviews().size());
  for (const auto& subview : view.subviews()) children.push_back(addView(subview));
  return children;
}

std::string NodeWriter::addView(const std::shared_ptr<UIView>& view, const char* role) {
  if (auto table = std::dynamic_pointer_cast<platform::UITableView>(view)) {
    return addTable(*this, table);
  }
  ControlMembers control = controlMembers(*this, *view);
  json node = viewMembers(*view, control.kind);
  node.update(control.members);
  if (*role) node["role"] = role;
  std::vector<std::string> children;
  if (!control.leaf) children = addSubviews(*view);
  return add(view->nodeIdentifier(), {NodeKind::view, view, 0}, std::move(node), children);
}

}  // namespace settings
