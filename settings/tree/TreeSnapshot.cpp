#include "settings/tree/TreeSnapshot.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/preferences/PSListController.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "platform/uikit/controllers/UIWindow.h"
#include "settings/device/Product.h"
#include "settings/device/Traits.h"
#include "settings/neighbours/NeighbourRegistry.h"
#include "settings/tree/CrashReport.h"
#include "settings/tree/NodeWriter.h"
#include "settings/tree/PresentedNodes.h"
#include "settings/tree/ProblemPage.h"

namespace settings {

using nlohmann::json;
using platform::UINavigationController;
using platform::UIViewController;

namespace {

using Page = std::shared_ptr<UIViewController>;
using Navigation = std::shared_ptr<UINavigationController>;

std::string titleOf(UIViewController& page) {
  return page.navigationItem()->title().value_or(page.title().value_or(""));
}

// Whether the page's title is a large one: one that does not say takes after the page below it, the
// first page after the bar.
bool hasLargeTitle(UIViewController& page) {
  using Mode = platform::UINavigationItemLargeTitleDisplayMode;
  const auto navigation = page.navigationController();
  const Mode mode = page.navigationItem()->largeTitleDisplayMode();
  if (mode != Mode::automatic || !navigation) return mode == Mode::always;
  const auto& stack = navigation->viewControllers();
  const auto found = std::ranges::find(stack, &page, &Page::get);
  if (found != stack.begin() && found != stack.end()) return hasLargeTitle(**(found - 1));
  const auto outer = navigation->navigationController();
  const auto& bar = outer ? outer->navigationBar() : navigation->navigationBar();
  return bar->prefersLargeTitles();
}

Navigation innermost(const Navigation& navigation) {
  auto below = std::dynamic_pointer_cast<UINavigationController>(navigation->topViewController());
  return below ? innermost(below) : navigation;
}

json barJson(const Navigation& navigation) {
  json bar{{"titleOpacity", navigation->navigationBar()->titleOpacity()},
           {"hidden", navigation->isNavigationBarHidden()},
           {"largeTitle", false},
           {"title", ""}};
  const Navigation inner = innermost(navigation);
  const auto& stack = inner->viewControllers();
  if (stack.empty()) return bar;
  bar["title"] = titleOf(*stack.back());
  bar["largeTitle"] = hasLargeTitle(*stack.back());
  if (stack.size() > 1) {
    const std::string below = titleOf(*stack[stack.size() - 2]);
    bar["back"] = below.empty() ? "Back" : below;
  }
  return bar;
}

json problemJson(const platform::PSPageProblem& problem) {
  return {{"title", problem.title}, {"text", problem.text}};
}

void addProblem(const UIViewController& page, json& node) {
  if (const auto* stand = dynamic_cast<const ProblemPage*>(&page)) {
    node["problem"] = problemJson(stand->problem());
  } else if (const auto* list = dynamic_cast<const platform::PSListController*>(&page)) {
    if (list->problem()) node["problem"] = problemJson(*list->problem());
  }
}

std::string addPage(NodeWriter& writer, const Page& page) {
  const auto& view = page->view();
  json node = writer.viewMembers(*view, "page");
  node["class"] = page->className();
  node["title"] = titleOf(*page);
  node["largeTitle"] = hasLargeTitle(*page);
  addProblem(*page, node);
  // The view of a list page may be its table itself.
  std::vector<std::string> children;
  if (std::dynamic_pointer_cast<platform::UITableView>(view)) {
    children.push_back(writer.addView(view));
  } else {
    children = writer.addSubviews(*view);
  }
  return writer.add(page->nodeIdentifier(), {NodeKind::page, page, 0}, std::move(node), children);
}

std::string addController(NodeWriter& writer, const Page& controller);

std::string addNavigation(NodeWriter& writer, const Navigation& navigation) {
  json node = writer.viewMembers(*navigation->view(), "navigation");
  node["class"] = navigation->className();
  node["bar"] = barJson(navigation);
  std::vector<std::string> children;
  if (const auto top = navigation->topViewController()) {
    children.push_back(addController(writer, top));
  }
  return writer.add(navigation->nodeIdentifier(), {NodeKind::navigation, navigation, 0},
                    std::move(node), children);
}

std::string addController(NodeWriter& writer, const Page& controller) {
  if (const auto navigation = std::dynamic_pointer_cast<UINavigationController>(controller)) {
    return addNavigation(writer, navigation);
  }
  return addPage(writer, controller);
}

// The outermost navigation, then what is presented over it, one over the other.
std::vector<std::string> addPages(NodeWriter& writer, const Navigation& outer,
                                  PhotoLibrary& library) {
  std::vector<std::string> children{addController(writer, outer)};
  for (auto next = outer->presentedViewController(); next;) {
    const auto presented = addPresented(writer, next, library);
    children.push_back(presented ? *presented : addController(writer, next));
    const auto over = next->presentedViewController();
    next = over == next ? nullptr : over;
  }
  return children;
}

std::string addCrash(NodeWriter& writer, const CrashReport& crash, std::uint64_t token) {
  json node{
      {"kind", "crash"}, {"name", crash.name}, {"reason", crash.reason}, {"where", crash.where}};
  return writer.add(token, {NodeKind::crash, {}, 0}, std::move(node), {});
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
  const auto& window = request.window;
  std::vector<std::string> children;
  if (window && request.withPages) children = addPages(writer, request.outer, *request.photos);
  if (request.crash) children.push_back(addCrash(writer, *request.crash, request.crashToken));
  json node = window ? writer.viewMembers(*window, "window") : json{{"kind", "window"}};
  const std::uint64_t token = window ? window->nodeIdentifier() : 0;
  return writer.add(token, {NodeKind::window, window, 0}, std::move(node), children);
}

}  // namespace

TreeSnapshot makeTreeSnapshot(const SnapshotRequest& request,
                              const platform::DeviceTraits& traits) {
  NodeWriter writer(request.identityBase);
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

}  // namespace settings
