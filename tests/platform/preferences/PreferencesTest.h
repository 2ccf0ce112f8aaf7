#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/preferences/BundleInfo.h"
#include "platform/preferences/PSListController.h"
#include "platform/preferences/PreferencesClasses.h"
#include "platform/uikit/UIKitClasses.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "tests/support/TestProcess.h"

namespace preferences_test {

// A list page that keeps its values in memory and records its actions.
class TestPage : public platform::PSListController {
  PLATFORM_CLASS(TestPage)

 public:
  // The name of the list; the page has no list without it.
  std::optional<std::string> listName;
  std::map<std::string, platform::Value> values;
  std::vector<std::pair<std::string, platform::Value>> written;
  std::vector<std::string> performed;
  int timesBuilt = 0;

  platform::PSSpecifiers specifiers() override;
  platform::Value readPreferenceValue(
      const std::shared_ptr<platform::PSSpecifier>& specifier) override;
  void setPreferenceValue(const platform::Value& value,
                          const std::shared_ptr<platform::PSSpecifier>& specifier) override;
  void restart() { performed.emplace_back("restart"); }
  void openRow(const std::shared_ptr<platform::PSSpecifier>& specifier);
  platform::Value fixedValue(const std::shared_ptr<platform::PSSpecifier>&) { return "fixed"; }
  void keepFixed(const platform::Value& value,
                 const std::shared_ptr<platform::PSSpecifier>& specifier);
};

// A page behind a row whose initialiser fails.
class RefusingPage : public platform::UIViewController {
  PLATFORM_CLASS(RefusingPage)

 public:
  bool init() override { return false; }
};

// A cell that handles the taps on its row.
class TapCell : public platform::PSTableCell {
  PLATFORM_CLASS(TapCell)

 public:
  int taps = 0;
  void open() { ++taps; }
  std::shared_ptr<platform::Object> cellTarget() override { return self<TapCell>(); }
  std::optional<std::string> cellAction() override { return "open"; }
};

class RefusingCell : public platform::PSTableCell {
  PLATFORM_CLASS(RefusingCell)

 public:
  using PSTableCell::initWithStyle;
  bool initWithStyle(platform::UITableViewCellStyle, const std::optional<std::string>&,
                     const std::shared_ptr<platform::PSSpecifier>&) override {
    return false;
  }
};

// The text of a property list with these items, each the content of a dictionary.
std::string listOf(const std::vector<std::string>& items, const std::string& more = "");
std::string textEntry(const std::string& key, const std::string& value);
// The entries "cell" and "label", and more.
std::string row(const std::string& cell, const std::string& label, const std::string& more = "");

// A process with a bundle whose lists the test writes, and one of its pages.
class PreferencesTest : public ::testing::Test {
 protected:
  static constexpr const char* bundle = "/var/jb/Library/PreferenceBundles/Sample.bundle";

  PreferencesTest();
  void writeList(const std::string& name, const std::string& text);
  // Makes a page from a list of these items and shows it in a navigation controller.
  void show(const std::vector<std::string>& items, const std::string& more = "");
  void layOut();
  std::shared_ptr<platform::PSSpecifier> specifier(const std::string& identifier);
  std::shared_ptr<platform::PSTableCell> cell(const std::string& identifier);
  platform::IndexPath pathOf(const std::string& identifier);
  bool tap(const std::string& identifier);
  // The identifier of each row, by section.
  std::vector<std::vector<std::string>> rowsShown();
  template <class T>
  std::shared_ptr<T> control(const std::string& identifier) {
    const auto found = cell(identifier);
    return found ? std::dynamic_pointer_cast<T>(found->control()) : nullptr;
  }

  test_support::TestProcess test;
  std::shared_ptr<TestPage> page;
  std::shared_ptr<platform::UINavigationController> navigation;
};

}  // namespace preferences_test
