#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/foundation/objects/Class.h"
#include "platform/preferences/PSListController.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "settings/application/ControlCenterRow.h"

namespace settings {

// The content of the application's own list.
struct SettingsListContents {
  std::string bundleTitle;  // of the row that opens the bundle's first page
  ControlCenterRow controlCenter = ControlCenterRow::present;
  // Makes a new first page of the bundle.
  std::function<std::shared_ptr<platform::UIViewController>()> makePage;
};

// The application's own first page, "Settings": a row "ControlCenter", as on a device, and the row
// that opens the bundle. Threads: main.
class SettingsListController final : public platform::PSListController {
  PLATFORM_CLASS(SettingsListController)

 public:
  virtual bool initWithContents(SettingsListContents contents);

  platform::PSSpecifiers specifiers() override;
  // Loads the bundle behind a row, without a tap: sets the row's property "isLoaded" to true.
  // Raises NSInvalidArgumentException if there is no row. For the row "ControlCenter" in the state
  // `raises`, raises NSInternalInconsistencyException.
  void lazyLoadSpecialBundleForSpecifier(const std::shared_ptr<platform::PSSpecifier>& specifier);
  // Opens a new page of the bundle.
  void openBundle();

 private:
  SettingsListContents _contents;
};

// The navigation of the Settings application, which holds its own list and the bundle's pages.
// Pages find the list by the value "_rootListController". Threads: main.
class RootController final : public platform::UINavigationController {
  PLATFORM_CLASS(PSRootController)

 public:
  const std::shared_ptr<SettingsListController>& rootListController() const noexcept {
    return _rootList;
  }
  // Makes it the first page.
  void setRootListController(std::shared_ptr<SettingsListController> list);

 private:
  std::shared_ptr<SettingsListController> _rootList;
};

// Requires the classes of UIKit and of the settings lists.
void registerRootController(platform::ClassRegistry& registry);

}  // namespace settings
