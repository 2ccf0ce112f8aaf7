#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "appearance/HBColorPickerTableCell.h"
#include "appearance/ZVRCustomizeColorListViewController.h"
#include "appearance/ZVRCustomizeListController.h"
#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/preferences/BundleInfo.h"
#include "platform/preferences/PreferencesClasses.h"
#include "platform/uikit/UIKitClasses.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "tests/support/ShownWindow.h"
#include "tests/support/TestProcess.h"

namespace zentrova::tests {

inline constexpr std::string_view bundleFolder =
    "/var/jb/Library/PreferenceBundles/ZentrovaPrefs.bundle";

// Registers what a process needs for the appearance pages.
inline void prepareAppearance(test_support::TestProcess& process) {
  auto& classes = process.classes();
  platform::registerUIKitClasses(classes);
  platform::registerPreferencesClasses(classes);
  HBPreferences::registerClass(classes);
  HBRootListController::registerClass(classes);
  HBColorPickerTableCell::registerClass(classes);
  ZVRCustomizeColorListViewController::registerClass(classes);
  ZVRCustomizeListController::registerClass(classes);
  process.process().provide(
      std::make_shared<platform::BundleInfo>(platform::BundleInfo{std::string(bundleFolder)}));
}

// A process with the classes of the appearance pages and test lists.
class AppearanceTest : public testing::Test {
 protected:
  static constexpr std::string_view bundle = bundleFolder;
  static constexpr std::string_view preferences = test_support::TestProcess::preferencePath;
  static constexpr const char* resetValue = "#FA0000:0.0";

  AppearanceTest() { prepareAppearance(process); }

  // --- Lists ---

  static platform::Value colorRow(std::string_view key, const platform::Value& defaultValue) {
    platform::Dictionary row{{"cell", "PSButtonCell"},
                             {"cellClass", "HBColorPickerTableCell"},
                             {"id", key},
                             {"key", key},
                             {"title", key}};
    return row.with("default", defaultValue);
  }
  static platform::Value plainRow(std::string_view cell, std::string_view identifier) {
    return platform::Dictionary{{"cell", cell}, {"id", identifier}, {"label", identifier}};
  }
  static platform::Value button(std::string_view identifier, std::string_view action) {
    return platform::Dictionary{
        {"cell", "PSButtonCell"}, {"id", identifier}, {"label", identifier}, {"action", action}};
  }
  void writeList(const std::string& name, std::vector<platform::Value> items,
                 std::string_view title = "List") {
    const platform::Dictionary list{{"title", title}, {"items", platform::Array(std::move(items))}};
    process.tree().write(std::string(bundle) + "/" + name + ".plist",
                         platform::writeXmlPropertyList(list).bytes);
  }

  // --- The preference file ---

  void writePreferences(const platform::Dictionary& content) {
    process.tree().write(preferences, platform::writeXmlPropertyList(content).bytes);
  }
  static platform::Value inFile(std::string_view key) {
    const auto content = platform::dictionaryWithContentsOfFile(preferences);
    return content ? content->valueForKey(key) : platform::Value();
  }

  // --- Pages ---

  // Shows the page in a window, in a navigation controller, with cells for the visible rows.
  template <class T>
  std::shared_ptr<T> show(std::shared_ptr<T> page) {
    navigation = platform::make(&platform::UINavigationController::initWithRootViewController,
                                std::shared_ptr<platform::UIViewController>(page));
    window = test_support::showInWindow(navigation);
    return page;
  }
  static std::shared_ptr<platform::PSTableCell> cellOf(platform::PSListController& page,
                                                       const std::string& identifier) {
    auto cell = page.cachedCellForSpecifierID(identifier);
    EXPECT_TRUE(cell) << identifier;
    return cell;
  }
  static std::shared_ptr<HBColorPickerTableCell> colorCellOf(platform::PSListController& page,
                                                             const std::string& identifier) {
    auto cell = std::dynamic_pointer_cast<HBColorPickerTableCell>(cellOf(page, identifier));
    EXPECT_TRUE(cell) << identifier;
    return cell;
  }
  // A finger on the middle of the row.
  void touch(platform::PSListController& page, const std::string& identifier) {
    const auto cell = cellOf(page, identifier);
    const auto size = cell->frame();
    finger(page).touchBegan(cell->convertPointToView({size.width / 2, size.height / 2}, nullptr));
  }
  static platform::UIGestureRecognizer& finger(platform::PSListController& page) {
    return *page.table()->gestureRecognizers().at(0);
  }
  void press(platform::PSListController& page, const std::string& identifier, double seconds) {
    touch(page, identifier);
    process.scheduler().advance(seconds);
    finger(page).touchEnded();
  }
  void tap(platform::PSListController& page, const std::string& identifier) {
    const auto path = page.indexPathForSpecifier(page.specifierForID(identifier));
    ASSERT_TRUE(path) << identifier;
    EXPECT_TRUE(page.table()->userTapRow(*path)) << identifier;
    window->layoutIfNeeded();
  }

  std::vector<std::string> logLines() {
    std::vector<std::string> lines;
    for (const auto& entry : process.log().entries()) lines.push_back(entry.message);
    return lines;
  }

  test_support::TestProcess process;
  std::shared_ptr<platform::UINavigationController> navigation;
  std::shared_ptr<platform::UIWindow> window;
};

}  // namespace zentrova::tests
