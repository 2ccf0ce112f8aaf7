#include "appearance/ZVRCustomizeColorListViewController.h"

#include <array>
#include <string>

#include "appearance/CustomizePages.h"
#include "platform/foundation/objects/ClassBuilder.h"

namespace zentrova {

namespace {

constexpr std::array listNames{"GlobalColors", "LightColors", "DarkColors"};

}  // namespace

bool ZVRCustomizeColorListViewController::initWithStyle(std::int64_t style) {
  if (!init()) return false;
  _style = style;
  return true;
}

platform::PSSpecifiers ZVRCustomizeColorListViewController::specifiers() {
  const bool isKnown = _style >= 0 && _style < std::ssize(listNames);
  if (!keptSpecifiers() && isKnown) {
    const std::string name = listNames[static_cast<std::size_t>(_style)];
    keepSpecifiers(loadSpecifiersFromPlistName(name, shared_from_this()));
  }
  return keptSpecifiers();
}

void ZVRCustomizeColorListViewController::viewDidLoad() {
  HBRootListController::viewDidLoad();
  setPreferences(HBPreferences::preferencesForIdentifier(preferencesDomain));
  showLargeTitle(*this);
  addLongPress(self<HBRootListController>());
}

void ZVRCustomizeColorListViewController::handleLongPress(
    const std::shared_ptr<platform::UILongPressGestureRecognizer>& press) {
  resetPressedColor(*this, press);
}

void ZVRCustomizeColorListViewController::registerClass(platform::ClassRegistry& registry) {
  using List = ZVRCustomizeColorListViewController;
  registry.add(platform::ClassBuilder<List>("HBRootListController")
                   .operation("initWithStyle:", &List::initWithStyle)
                   .property("style", &List::style, &List::setStyle)
                   .operation("handleLongPress:", &List::handleLongPress)
                   .build());
}

}  // namespace zentrova
