#include "root/ZVRRootListController.h"

#include <string>
#include <string_view>
#include <utility>

#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/objects/NSLog.h"
#include "platform/uikit/drawing/UIDevice.h"
#include "prefs/Respring.h"
#include "root/RootRows.h"

namespace zentrova {

using platform::PSSpecifier;
using platform::PSSpecifierList;
using platform::PSSpecifiers;
using platform::Value;

namespace {

std::shared_ptr<PSSpecifier> makeSwitch(const std::shared_ptr<platform::Object>& page,
                                        const SwitchRow& row) {
  auto result = PSSpecifier::preferenceSpecifierNamed(
      std::string(row.label), page,
      "setPreferenceValue:specifier:", "readPreferenceValue:", std::nullopt, platform::PSSwitchCell,
      std::nullopt);
  result->setProperty(row.label, "label");
  result->setProperty(row.key, "key");
  result->setProperty(row.key, "id");
  result->setProperty(preferencesDomain, "defaults");
  // Without a default, the switch is off until it is set.
  result->setProperty(nullptr, "default");
  return result;
}

void setFooter(const std::shared_ptr<PSSpecifier>& group, std::string_view footer) {
  if (group) group->setProperty(footer, "footerText");
}

}  // namespace

bool ZVRRootListController::isTablet() {
  return platform::UIDevice::currentDevice()->userInterfaceIdiom() ==
         platform::UserInterfaceIdiom::pad;
}

PSSpecifiers ZVRRootListController::specifiers() {
  if (auto kept = keptSpecifiers()) return kept;
  PSSpecifierList rows = *loadSpecifiersFromPlistName("Root", shared_from_this());
  if (isTablet()) {
    std::erase_if(rows, [](const auto& row) { return isPhoneOnlyRow(row->identifier()); });
  } else {
    addPresentationRows(rows);
  }
  keepSpecifiers(platform::makeSpecifiers(std::move(rows)));
  return keptSpecifiers();
}

// The loop also visits, and logs, the rows that it inserts.
void ZVRRootListController::addPresentationRows(PSSpecifierList& rows) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const auto row = rows[i];
    const auto identifier = row->identifier();
    platform::NSLog("zentrova id: %@, value: %@", {identifier, row->propertyForKey("value")});
    if (identifier == presentationStyleRow) {
      if (readPreferenceValue(row).intValue() != 1) continue;
      const auto next = rows.begin() + static_cast<std::ptrdiff_t>(i) + 1;
      rows.insert(next, {makeSwitch(shared_from_this(), alwaysFromTopRow),
                         makeSwitch(shared_from_this(), reverseOrderRow)});
    } else if (identifier == presentationGroupRow) {
      // Set for every style, even while the switch that it describes is not shown.
      setFooter(row, presentationFooter);
    }
  }
}

void ZVRRootListController::setPreferenceValue(const Value& value,
                                               const std::shared_ptr<PSSpecifier>& specifier) {
  HBRootListController::setPreferenceValue(value, specifier);
  if (isTablet() || !specifier || specifier->identifier() != presentationStyleRow) return;
  const auto style = value.intValue();
  if (style == 1) showPresentationSwitches(specifier);
  if (style == 0) hidePresentationSwitches();
}

void ZVRRootListController::showPresentationSwitches(const std::shared_ptr<PSSpecifier>& styleRow) {
  insertSpecifier(makeSwitch(shared_from_this(), reverseOrderRow), styleRow, true);
  setFooter(specifierForID(std::string(presentationGroupRow)), presentationFooter);
  insertSpecifier(makeSwitch(shared_from_this(), alwaysFromTopRow), styleRow, true);
}

void ZVRRootListController::hidePresentationSwitches() {
  removeSpecifierID(std::string(alwaysFromTopRow.key), true);
  removeSpecifierID(std::string(reverseOrderRow.key), true);
  setFooter(specifierForID(std::string(presentationGroupRow)), presentationFooter);
}

void ZVRRootListController::respring() {
  restartHomeScreen();
}

void ZVRRootListController::registerClass(platform::ClassRegistry& registry) {
  using Page = ZVRRootListController;
  platform::ClassBuilder<Page> builder("HBRootListController");
  builder.operation("setPreferenceValue:specifier:", &Page::setPreferenceValue)
      .operation("viewDidLoad", &Page::viewDidLoad)
      .operation("viewDidAppear:", &Page::viewDidAppear)
      .operation("viewDidLayoutSubviews", &Page::viewDidLayoutSubviews)
      .operation("scrollViewDidScroll:", &Page::scrollViewDidScroll)
      .operation("respring", &Page::respring)
      .operation("getCurrentVersion", &Page::getCurrentVersion)
      .property("_versionLabel", &Page::versionLabel, &Page::setVersionLabel)
      .operation("showFavoriteModulesViewController", &Page::showFavoriteModulesViewController)
      .operation("showModuleArrangeViewController", &Page::showModuleArrangeViewController)
      .operation("showCustomizeViewController", &Page::showCustomizeViewController)
      .property("favoriteModulesViewController", &Page::favoriteModulesViewController,
                &Page::setFavoriteModulesViewController)
      .property("arrangeModulesViewController", &Page::arrangeModulesViewController,
                &Page::setArrangeModulesViewController)
      .property("customizeViewController", &Page::customizeViewController,
                &Page::setCustomizeViewController);
  registry.add(builder.build());
}

}  // namespace zentrova
