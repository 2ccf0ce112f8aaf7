// The pages that the root page's buttons open.

#include <memory>
#include <string_view>
#include <utility>

#include "platform/foundation/objects/Class.h"
#include "platform/foundation/objects/Process.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "root/ZVRRootListController.h"

namespace zentrova {

namespace {

// A new page of a class that need not be there; empty where it is not.
std::shared_ptr<platform::UIViewController> pageOfClass(std::string_view name) {
  const auto* const found = platform::Process::current().classes().find(name);
  if (!found) return nullptr;
  return std::dynamic_pointer_cast<platform::UIViewController>(found->makeInstance());
}

}  // namespace

void ZVRRootListController::setFavoriteModulesViewController(
    std::shared_ptr<ZVRFavoriteModules> page) {
  _favoriteModulesViewController = std::move(page);
}

void ZVRRootListController::setArrangeModulesViewController(SubPage page) {
  _arrangeModulesViewController = std::move(page);
}

void ZVRRootListController::setCustomizeViewController(SubPage page) {
  _customizeViewController = std::move(page);
}

void ZVRRootListController::showFavoriteModulesViewController() {
  if (!_favoriteModulesViewController) {
    _favoriteModulesViewController = platform::make<ZVRFavoriteModules>();
  }
  push(_favoriteModulesViewController);
}

void ZVRRootListController::showModuleArrangeViewController() {
  if (!_arrangeModulesViewController) {
    _arrangeModulesViewController = pageOfClass("ZVRArrangeModulesViewController");
  }
  push(_arrangeModulesViewController);
}

void ZVRRootListController::showCustomizeViewController() {
  if (!_customizeViewController) {
    _customizeViewController = pageOfClass("ZVRCustomizeListController");
  }
  push(_customizeViewController);
}

void ZVRRootListController::push(const SubPage& page) {
  if (const auto navigation = navigationController()) navigation->pushViewController(page, true);
}

}  // namespace zentrova
