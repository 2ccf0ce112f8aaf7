#include "settings/tree/PageKinds.h"

#include <algorithm>

#include "platform/preferences/PSListController.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "platform/uikit/controllers/UIWindow.h"
#include "platform/uikit/tables/UITableView.h"
#include "settings/tree/KindBuilder.h"
#include "settings/tree/ProblemPage.h"

namespace settings {

using nlohmann::json;
using platform::UINavigationController;
using platform::UIViewController;

namespace {

using Page = std::shared_ptr<UIViewController>;

std::string titleOfPage(UIViewController& page) {
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

UINavigationController& innermost(UINavigationController& navigation) {
  const auto below =
      std::dynamic_pointer_cast<UINavigationController>(navigation.topViewController());
  return below ? innermost(*below) : navigation;
}

json barJson(UINavigationController& navigation) {
  json bar{{"titleOpacity", navigation.navigationBar()->titleOpacity()},
           {"hidden", navigation.isNavigationBarHidden()},
           {"largeTitle", false},
           {"title", ""}};
  const auto& stack = innermost(navigation).viewControllers();
  if (stack.empty()) return bar;
  bar["title"] = titleOfPage(*stack.back());
  bar["largeTitle"] = hasLargeTitle(*stack.back());
  if (stack.size() > 1) {
    const std::string below = titleOfPage(*stack[stack.size() - 2]);
    bar["back"] = below.empty() ? "Back" : below;
  }
  return bar;
}

NodeIdentities addTop(NodeWriter& writer, UINavigationController& navigation) {
  const auto top = navigation.topViewController();
  return top ? NodeIdentities{writer.addController(top)} : NodeIdentities();
}

ActionResult goBack(UINavigationController& navigation) {
  UINavigationController& inner = innermost(navigation);
  if (inner.viewControllers().size() < 2) return refused("there is no page to go back to");
  inner.popViewControllerAnimated(true);
  return {};
}

NodeKind navigationKind() {
  return KindBuilder<UINavigationController>("navigation")
      .map("bar", &barJson)
      .children(&addTop)
      .action("back", &goBack)
      .build();
}

std::optional<json> problemOfPage(const UIViewController& page) {
  const auto shown = [](const platform::PSPageProblem& problem) {
    return json{{"title", problem.title}, {"text", problem.text}};
  };
  if (const auto* stand = dynamic_cast<const ProblemPage*>(&page)) return shown(stand->problem());
  const auto* list = dynamic_cast<const platform::PSListController*>(&page);
  if (list == nullptr || !list->problem()) return std::nullopt;
  return shown(*list->problem());
}

NodeIdentities addPageContent(NodeWriter& writer, UIViewController& page) {
  const auto& view = page.view();
  // The view of a list page may be its table itself.
  const bool isTable = std::dynamic_pointer_cast<platform::UITableView>(view) != nullptr;
  return isTable ? NodeIdentities{writer.addView(view)} : writer.addSubviews(*view);
}

NodeKind pageKind() {
  return KindBuilder<UIViewController>("page")
      .member("title", &titleOfPage)
      .member("largeTitle", &hasLargeTitle)
      .map("problem", &problemOfPage)
      .children(&addPageContent)
      .build();
}

}  // namespace

std::vector<NodeKind> pageKinds() {
  return {KindBuilder<platform::UIWindow>("window").build(), navigationKind(), pageKind()};
}

}  // namespace settings
