#include "appearance/ZVRCustomizeListController.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "appearance/CustomizePages.h"
#include "appearance/CustomizeRows.h"
#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/objects/Process.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "platform/uikit/drawing/UIDevice.h"
#include "platform/uikit/drawing/UIScreen.h"

namespace zentrova {

using platform::PSSpecifierList;
using platform::PSSpecifiers;

namespace {

constexpr std::string_view colorListClass = "ZVRCustomizeColorListViewController";

// A toggle takes a quarter of the screen's width without margins and gaps. The setting is the
// difference between the standard size and that. A tablet has room for the standard size.
double toggleOffset(bool isInset) {
  constexpr double margins = 40.0;
  constexpr double insetMargins = 25.0;
  constexpr double gaps = 30.0;
  constexpr double standardTile = 68.0;
  const auto idiom = platform::UIDevice::currentDevice()->userInterfaceIdiom();
  if (idiom == platform::UserInterfaceIdiom::pad) return 0.0;
  const double width = platform::UIScreen::mainScreen()->bounds().width;
  const double tile = ((width - margins) - (isInset ? insetMargins : 0.0) - gaps) * 0.25;
  return standardTile - tile;
}

}  // namespace

PSSpecifiers ZVRCustomizeListController::specifiers() {
  if (auto kept = keptSpecifiers()) return kept;
  PSSpecifierList rows = *loadSpecifiersFromPlistName("Customize", shared_from_this());
  setPreferences(HBPreferences::preferencesForIdentifier(preferencesDomain));
  if (storedImage()) {
    const auto row = std::ranges::find_if(
        rows, [](const auto& each) { return each->identifier() == imageButtonRow; });
    if (row != rows.end()) (*row)->setName(changeImageTitle);
  }
  keepSpecifiers(platform::makeSpecifiers(std::move(rows)));
  return keptSpecifiers();
}

void ZVRCustomizeListController::viewDidLoad() {
  HBRootListController::viewDidLoad();
  setTitle("Customize");
  showLargeTitle(*this);
  addLongPress(self<HBRootListController>());
}

void ZVRCustomizeListController::handleLongPress(
    const std::shared_ptr<platform::UILongPressGestureRecognizer>& press) {
  resetPressedColor(*this, press);
}

// --- Colours and sizes ---

void ZVRCustomizeListController::showGlobalColors() {
  showColors(0);
}

void ZVRCustomizeListController::showLightColors() {
  showColors(1);
}

void ZVRCustomizeListController::showDarkColors() {
  showColors(2);
}

void ZVRCustomizeListController::showColors(int style) {
  const auto list =
      platform::makeNamed<platform::UIViewController>(colorListClass, "initWithStyle:", {style});
  if (!list) return;
  if (const auto navigation = navigationController()) navigation->pushViewController(list, true);
}

void ZVRCustomizeListController::restoreToggleSize() {
  if (const auto store = preferences()) {
    const bool isInset = store->boolForKey("insetStyle", false);
    const auto offset = static_cast<float>(toggleOffset(isInset));
    store->perform("setFloat:forKey:", {offset, "toggleModuleOffsetSize"});
  }
  reloadSpecifiers();
}

void ZVRCustomizeListController::registerClass(platform::ClassRegistry& registry) {
  using Page = ZVRCustomizeListController;
  registry.add(platform::ClassBuilder<Page>("HBRootListController")
                   .operation("handleLongPress:", &Page::handleLongPress)
                   .operation("showGlobalColors", &Page::showGlobalColors)
                   .operation("showLightColors", &Page::showLightColors)
                   .operation("showDarkColors", &Page::showDarkColors)
                   .operation("restoreToggleSize", &Page::restoreToggleSize)
                   .operation("backgroundViewButtonPressed", &Page::backgroundViewButtonPressed)
                   .operation("imagePickerController:didFinishPickingMediaWithInfo:",
                              &Page::didFinishPickingMediaWithInfo)
                   .build());
}

}  // namespace zentrova
