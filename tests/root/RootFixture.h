#pragma once

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/values/Collections.h"
#include "platform/preferences/BundleInfo.h"
#include "platform/preferences/BundleInterface.h"
#include "platform/preferences/PreferencesClasses.h"
#include "platform/uikit/UIKitClasses.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "root/ZVRRootListController.h"
#include "tests/support/ShownWindow.h"
#include "tests/support/TestProcess.h"

namespace zentrova::tests {

// A process with the bundle's classes and a test list "Root".
class RootTest : public testing::Test {
 protected:
  using Identifiers = std::vector<std::string>;
  static constexpr std::string_view bundle =
      "/var/jb/Library/PreferenceBundles/ZentrovaPrefs.bundle";
  static constexpr std::string_view kestrellePath =
      "/var/jb/var/mobile/Library/Preferences/com.hollowmere.kestrelleprefs.plist";

  explicit RootTest(test_support::TestProcess::RunPrograms programs =
                        test_support::TestProcess::RunPrograms::recorded)
      : process(programs) {
    platform::registerUIKitClasses(process.classes());
    platform::registerPreferencesClasses(process.classes());
    EXPECT_EQ(zentrova_bundle_register(&process.classes(), platform::bundleInterfaceVersion),
              platform::bundleRegistered);
    process.process().provide(
        std::make_shared<platform::BundleInfo>(platform::BundleInfo{std::string(bundle)}));
  }

  static platform::Value item(std::string_view cell, std::string_view identifier) {
    return platform::Dictionary{{"cell", cell}, {"id", identifier}, {"label", identifier}};
  }
  static platform::Value choice(std::string_view identifier, std::string_view key) {
    return platform::Dictionary{{"cell", "PSSegmentCell"},
                                {"id", identifier},
                                {"key", key},
                                {"default", 0},
                                {"validValues", platform::Array{0, 1, 2}},
                                {"validTitles", platform::Array{"a", "b", "c"}}};
  }
  // Every row that the page changes, with one row before and one after them.
  static std::vector<platform::Value> allItems() {
    return {item("PSGroupCell", "first"),
            item("PSSwitchCell", "before"),
            item("PSGroupCell", "presentationGroup"),
            item("PSStaticTextCell", "presentationText"),
            choice("presentationStyle", "presentationStyle"),
            item("PSSwitchCell", "presentFullyExpanded"),
            item("PSGroupCell", "gestureGroupCell"),
            item("PSStaticTextCell", "gestureText"),
            choice("gestureSegmentCell", "gesture"),
            item("PSGroupCell", "last"),
            item("PSSwitchCell", "after")};
  }
  void writeRoot(std::vector<platform::Value> items = allItems()) {
    const platform::Dictionary list{{"title", "Zentrova"},
                                    {"items", platform::Array(std::move(items))}};
    process.tree().write(std::string(bundle) + "/Root.plist",
                         platform::writeXmlPropertyList(list).bytes);
  }
  void writePreferences(std::string_view path, const platform::Dictionary& content) {
    process.tree().write(path, platform::writeXmlPropertyList(content).bytes);
  }
  void storeStyle(const platform::Value& style) {
    writePreferences(test_support::TestProcess::preferencePath, {{"presentationStyle", style}});
  }
  platform::Value inFile(std::string_view key) {
    const auto content =
        platform::dictionaryWithContentsOfFile(test_support::TestProcess::preferencePath);
    return content ? content->valueForKey(key) : platform::Value();
  }
  void beTablet() { process.traits().idiom = platform::UserInterfaceIdiom::pad; }

  std::shared_ptr<ZVRRootListController> makePage() {
    return std::dynamic_pointer_cast<ZVRRootListController>(
        process.classes().find("ZVRRootListController")->makeInstance());
  }
  // Shows the page in a window, with cells for the visible rows.
  std::shared_ptr<ZVRRootListController> showPage() {
    page = makePage();
    const auto navigation =
        platform::make(&platform::UINavigationController::initWithRootViewController, page);
    window = test_support::showInWindow(navigation);
    return page;
  }

  void leavePage() {
    page = nullptr;
    window = nullptr;
  }
  // The number of live objects after the objects that live as long as the process were made.
  std::int64_t aliveWithoutPage() {
    showPage();
    leavePage();
    process.scheduler().advance(10);
    return platform::Object::liveCount();
  }

  static Identifiers identifiersOf(const std::shared_ptr<ZVRRootListController>& controller) {
    Identifiers result;
    for (const auto& row : *controller->specifiers()) {
      result.push_back(row->identifier().value_or("(null)"));
    }
    return result;
  }
  static platform::Value footerOf(const std::shared_ptr<ZVRRootListController>& controller,
                                  const std::string& group) {
    const auto row = controller->specifierForID(group);
    return row ? row->propertyForKey("footerText") : platform::Value();
  }
  Identifiers logLines() {
    Identifiers result;
    for (const auto& entry : process.log().entries()) result.push_back(entry.message);
    return result;
  }

  static constexpr std::string_view presentationText =
      "Reverse module order: When presented from the top, reverse the module order configuration.";

  test_support::TestProcess process;
  std::shared_ptr<platform::UIWindow> window;
  std::shared_ptr<ZVRRootListController> page;
};

}  // namespace zentrova::tests
