// The pages that the buttons of the root page open.

#include <memory>
#include <utility>

#include "platform/foundation/objects/Process.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "root/ZVRRootListController.h"

namespace zentrova {

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
    _arrangeModulesViewController =
        platform::makeNamed<platform::UIViewController>("ZVRArrangeModulesViewController");
  }
  push(_arrangeModulesViewController);
}

void ZVRRootListController::showCustomizeViewController() {
  if (!_customizeViewController) {
    _customizeViewController =
        platform::makeNamed<platform::UIViewController>("ZVRCustomizeListController");
  }
  push(_customizeViewController);
}

void ZVRRootListController::push(const SubPage& page) {
  if (const auto navigation = navigationController()) navigation->pushViewController(page, true);
}

}  // namespace zentrova
