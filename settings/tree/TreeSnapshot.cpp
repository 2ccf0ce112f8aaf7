#include "settings/tree/TreeSnapshot.h"

#include <utility>

#include "platform/uikit/controllers/UINavigationController.h"
#include "platform/uikit/controllers/UIWindow.h"
#include "settings/device/Product.h"
#include "settings/device/Traits.h"
#include "settings/neighbours/NeighbourRegistry.h"
#include "settings/tree/CrashReport.h"
#include "settings/tree/NodeKinds.h"
#include "settings/tree/NodeWriter.h"
#include "settings/tree/PresentedKinds.h"

namespace settings {

using nlohmann::json;

namespace {

// The outermost navigation, then what is presented over it, one over the other.
NodeIdentities addPages(NodeWriter& writer,
                        const std::shared_ptr<platform::UINavigationController>& outer) {
  NodeIdentities children{writer.addController(outer)};
  for (auto next = outer->presentedViewController(); next;) {
    children.push_back(writer.addController(next));
    const auto over = next->presentedViewController();
    next = over == next ? nullptr : over;
  }
  return children;
}

json neighboursJson(const NeighbourRegistry& neighbours) {
  json result = json::object();
  for (const auto& name : neighbours.names()) result[name] = neighbours.isOn(name);
  return result;
}

json deviceJson(const platform::DeviceTraits& traits, const NeighbourRegistry& neighbours) {
  const bool isPad = traits.idiom == platform::UserInterfaceIdiom::pad;
  const bool isDark = traits.appearance == platform::UserInterfaceStyle::dark;
  return {{"idiom", isPad ? "pad" : "phone"},
          {"system", traits.systemVersion.text()},
          {"screen",
           {{"width", traits.screenWidth},
            {"height", traits.screenHeight},
            {"scale", traits.screenScale}}},
          {"appearance", isDark ? "dark" : "light"},
          {"textScale", traits.textScale},
          {"tint", traits.tint},
          {"neighbours", neighboursJson(neighbours)}};
}

std::string addWindow(NodeWriter& writer, const SnapshotRequest& request) {
  NodeIdentities children;
  if (request.window && request.withPages) children = addPages(writer, request.outer);
  if (request.crash) {
    CrashReport crash = *request.crash;
    children.push_back(writer.addPart("crash", crash, request.crashToken));
  }
  if (request.window) return writer.addViewAs("window", request.window, {}, std::move(children));
  return writer.addEmptyWindow(children);
}

}  // namespace

TreeSnapshot makeTreeSnapshot(const SnapshotRequest& request,
                              const platform::DeviceTraits& traits) {
  NodeWriter writer(nodeKinds(), request.photos, request.identityBase);
  TreeSnapshot result;
  const std::string root = addWindow(writer, request);
  result.tree = {{"root", root},
                 {"device", deviceJson(traits, *request.neighbours)},
                 {"traits", jsonFromTraits(traits)},
                 {"application", {{"program", programName}, {"bundle", request.bundleTitle}}}};
  result.tree["nodes"] = std::move(writer.nodes());
  result.targets = std::move(writer.targets());
  result.largestIdentity = writer.largest();
  return result;
}

json waitingNode(const std::string& program) {
  Wait wait{program};
  json node = NodeWriter(nodeKinds(), nullptr, 0).node(nodeKinds().named("waiting"), wait);
  node["children"] = json::array();
  return node;
}

}  // namespace settings
