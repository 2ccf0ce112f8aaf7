#include "settings/application/RootController.h"

#include <optional>
#include <utility>

#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/values/Exception.h"

namespace settings {

using platform::PSSpecifier;

namespace {

constexpr const char* controlCenterIdentifier = "ControlCenter";
constexpr const char* bundleIdentifier = "Bundle";

std::shared_ptr<PSSpecifier> makeRow(const std::optional<std::string>& label,
                                     const char* identifier,
                                     platform::PSCellType type = platform::PSLinkCell) {
  auto row = PSSpecifier::preferenceSpecifierNamed(label, nullptr, std::nullopt, std::nullopt,
                                                   std::nullopt, type, std::nullopt);
  row->setIdentifier(identifier);
  return row;
}

}  // namespace

std::string controlCenterRowProblem(std::string_view name) {
  return "invalid value for the trait " + std::string(controlCenterRowTrait) + ": \"" +
         std::string(name) + "\" (expected present, missing or raises)";
}

bool SettingsListController::initWithContents(SettingsListContents contents) {
  if (!init()) return false;
  _contents = std::move(contents);
  setTitle("Settings");
  // The bundle's page asks for a row before the list is shown.
  specifiers();
  return true;
}

platform::PSSpecifiers SettingsListController::specifiers() {
  if (auto kept = keptSpecifiers()) return kept;
  platform::PSSpecifierList rows;
  if (_contents.controlCenter != ControlCenterRow::missing) {
    const auto group = makeRow(std::nullopt, "SystemGroup", platform::PSGroupCell);
    group->setProperty(
        "Control Center\u2019s own settings belong to the system; they open on a device.",
        "footerText");
    rows.push_back(group);
    rows.push_back(makeRow("Control Center", controlCenterIdentifier));
  }
  rows.push_back(makeRow(std::nullopt, "BundleGroup", platform::PSGroupCell));
  const auto bundle = makeRow(_contents.bundleTitle, bundleIdentifier);
  bundle->setTarget(shared_from_this());
  bundle->setButtonAction("openBundle");
  rows.push_back(bundle);
  keepSpecifiers(platform::makeSpecifiers(std::move(rows)));
  return keptSpecifiers();
}

void SettingsListController::lazyLoadSpecialBundleForSpecifier(
    const std::shared_ptr<PSSpecifier>& specifier) {
  if (!specifier) platform::raiseInvalidArgument("there is no row whose bundle could be loaded");
  if (_contents.controlCenter == ControlCenterRow::raises) {
    throw platform::Exception("NSInternalInconsistencyException",
                              "the bundle behind the row could not be loaded");
  }
  specifier->setProperty(true, "isLoaded");
}

void SettingsListController::openBundle() {
  const auto navigation = navigationController();
  if (navigation && _contents.makePage) {
    navigation->pushViewController(_contents.makePage(), true);
  }
}

void RootController::setRootListController(std::shared_ptr<SettingsListController> list) {
  _rootList = std::move(list);
  setViewControllers({_rootList}, false);
}

void registerRootController(platform::ClassRegistry& registry) {
  using List = SettingsListController;
  registry.add(
      platform::ClassBuilder<List>("PSListController")
          .operation("lazyLoadSpecialBundleForSpecifier:", &List::lazyLoadSpecialBundleForSpecifier)
          .operation("openBundle", &List::openBundle)
          .build());
  registry.add(platform::ClassBuilder<RootController>("UINavigationController")
                   .key("_rootListController", &RootController::rootListController)
                   .build());
}

}  // namespace settings
