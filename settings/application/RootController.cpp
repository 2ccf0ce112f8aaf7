#include "settings/application/RootController.h"

namespace settings {
namespace {

std::shared_ptr<platform::PSSpecifier> controlCenterRow() {
  auto row = platform::PSSpecifier::preferenceSpecifierNamed(
      "Control Center", nullptr, std::nullopt, std::nullopt, std::nullopt, platform::PSLinkCell,
      std::nullopt);
  row->setIdentifier("ControlCenter");
  return row;
}

}  // namespace

std::shared_ptr<platform::PSListController> RootController::rootListController() {
  if (!_rootList) {
    _rootList = platform::make<platform::PSListController>();
    _rootList->keepSpecifiers(platform::makeSpecifiers({controlCenterRow()}));
  }
  return _rootList;
}

void registerRootController(platform::ClassRegistry& registry) {
  registry.add(platform::ClassBuilder<RootController>("UINavigationController")
                   .key("_rootListController", &RootController::rootListController)
                   .build());
}

}  // namespace settings
