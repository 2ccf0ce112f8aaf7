#include "settings/tree/EveryNode.h"

#include <cmath>

#include "settings/tree/KindBuilder.h"

namespace settings {

using nlohmann::json;
using platform::UIView;

namespace {

// Optional as the other members of a look are: there are nodes without a view.
std::optional<json> frameJson(const UIView& view) {
  const platform::Rect& frame = view.frame();
  return json::array({frame.x, frame.y, frame.width, frame.height});
}

std::optional<json> layerJson(NodeWriter& writer, const UIView& view) {
  const auto& layer = view.layerIfMade();
  if (!layer) return std::nullopt;
  json result = json::object();
  // A value that is not a length is drawn as 0, and JSON cannot express it.
  const double radius = layer->cornerRadius();
  if (std::isfinite(radius) && radius != 0) result["radius"] = radius;
  if (layer->borderWidth() != 0) result["borderWidth"] = layer->borderWidth();
  if (layer->borderColor()) result["borderColor"] = colorJson(*layer->borderColor());
  if (layer->mask() && layer->mask()->contents()) {
    result["mask"] = writer.imageJson(layer->mask()->contents());
  }
  if (result.empty()) return std::nullopt;
  return result;
}

std::optional<json> animationJson(const UIView& view) {
  const auto& animation = view.lastAnimation();
  if (!animation) return std::nullopt;
  const bool fades = animation->kind == platform::ViewAnimationKind::crossDissolve;
  return json{{"id", animation->identifier},
              {"duration", animation->duration},
              {"kind", fades ? "fade" : "change"}};
}

}  // namespace

NodeKind everyNode() {
  return KindBuilder<UIView>("node")
      .written({"kind", MemberForm::text})
      .written({"children", MemberForm::texts})
      .written({"class", MemberForm::text, true})
      .written({"role", MemberForm::text, true})
      .list("frame", &frameJson)
      .optional("alpha", &UIView::alpha, 1)
      .optional("hidden", &UIView::isHidden, false)
      .optional("interactive", &UIView::isUserInteractionEnabled, true)
      .optional("background", &UIView::backgroundColor)
      .optional("tint", &UIView::ownTintColor)
      .map("layer", &layerJson)
      .optional("label", &UIView::accessibilityLabel)
      .map("animation", &animationJson)
      .build();
}

}  // namespace settings
