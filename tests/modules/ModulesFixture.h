#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "modules/ModuleCatalogue.h"
#include "modules/ZVRArrangeModulesViewController.h"
#include "modules/ZVRFavoriteModules.h"
#include "modules/ZVRManageModuleViewController.h"
#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/preferences/BundleInfo.h"
#include "platform/preferences/PreferencesClasses.h"
#include "platform/uikit/UIKitClasses.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "platform/uikit/drawing/UIColor.h"
#include "platform/uikit/views/NSLayoutConstraint.h"
#include "tests/support/ShownWindow.h"
#include "tests/support/TestProcess.h"

namespace zentrova::tests {

using Texts = std::vector<std::string>;

// A process with the classes of the module pages, and a window that shows one of them.
class ModulesTest : public testing::Test {
 protected:
  static constexpr std::string_view bundle =
      "/var/jb/Library/PreferenceBundles/ZentrovaPrefs.bundle";

  ModulesTest() {
    platform::registerUIKitClasses(process.classes());
    platform::registerPreferencesClasses(process.classes());
    HBPreferences::registerClass(process.classes());
    HBRootListController::registerClass(process.classes());
    ZVRArrangeModulesViewController::registerClass(process.classes());
    ZVRFavoriteModules::registerClass(process.classes());
    ZVRManageModuleViewController::registerClass(process.classes());
    process.process().provide(
        std::make_shared<platform::BundleInfo>(platform::BundleInfo{std::string(bundle)}));
  }

  static platform::Array arrayOf(const Texts& texts) {
    return platform::Array(std::vector<platform::Value>(texts.begin(), texts.end()));
  }
  void writeList(std::string_view path, const platform::Dictionary& content) {
    process.tree().write(path, platform::writeXmlPropertyList(content).bytes);
  }
  static platform::Value inList(std::string_view path, std::string_view key) {
    const auto content = platform::dictionaryWithContentsOfFile(path);
    return content ? content->valueForKey(key) : platform::Value();
  }
  void store(std::string_view key, const platform::Value& value) {
    writeList(test_support::TestProcess::preferencePath, {{key, value}});
  }
  static platform::Value stored(std::string_view key) {
    return inList(test_support::TestProcess::preferencePath, key);
  }
  // The files written since the last call.
  Texts writes() {
    Texts paths;
    for (const auto& write : process.files().takeWrites()) paths.push_back(write.path);
    return paths;
  }

  void show(const std::shared_ptr<platform::UIViewController>& shown) {
    navigation =
        platform::make(&platform::UINavigationController::initWithRootViewController, shown);
    window = test_support::showInWindow(navigation);
    process.files().takeWrites();
  }

  std::shared_ptr<platform::UITableViewCell> cellAt(
      const std::shared_ptr<platform::UITableView>& table, std::int64_t section, std::int64_t row) {
    window->layoutIfNeeded();
    return table->cellForRowAtIndexPath({section, row});
  }
  // The texts of the rows; "(null)" for a row without text.
  Texts rowsOf(const std::shared_ptr<platform::UITableView>& table, std::int64_t section) {
    Texts texts;
    for (std::int64_t row = 0; row < table->numberOfRowsInSection(section); ++row) {
      const auto cell = cellAt(table, section, row);
      texts.push_back(cell ? cell->textLabel()->text().value_or("(null)") : "(no cell)");
    }
    return texts;
  }

  // Checks what both editing tables share.
  void expectEditingPage(const std::shared_ptr<platform::UIViewController>& shown,
                         const std::shared_ptr<platform::UITableView>& table) {
    EXPECT_EQ(shown->view()->backgroundColor()->systemName(), "systemGroupedBackgroundColor");
    EXPECT_EQ(shown->navigationItem()->largeTitleDisplayMode(),
              platform::UINavigationItemLargeTitleDisplayMode::always);
    EXPECT_TRUE(navigation->navigationBar()->prefersLargeTitles());
    EXPECT_EQ(table->style(), platform::UITableViewStyle::grouped);
    EXPECT_TRUE(table->isEditing());
    EXPECT_EQ(table->numberOfSections(), 2);
    EXPECT_FALSE(table->translatesAutoresizingMaskIntoConstraints());
    EXPECT_EQ(table->superview(), shown->view());
    expectPinnedEdges(shown->view(), table);
  }
  static void expectPinnedEdges(const std::shared_ptr<platform::UIView>& view,
                                const std::shared_ptr<platform::UIView>& table) {
    using enum platform::NSLayoutAttribute;
    std::vector<platform::NSLayoutAttribute> edges;
    for (const auto& constraint : view->constraints()) {
      EXPECT_EQ(constraint->firstItem(), table);
      EXPECT_EQ(constraint->secondItem(), view);
      EXPECT_EQ(constraint->firstAttribute(), constraint->secondAttribute());
      EXPECT_EQ(constraint->constant(), 0);
      edges.push_back(constraint->firstAttribute());
    }
    EXPECT_THAT(edges, testing::ElementsAre(top, leading, trailing, bottom));
  }

  test_support::TestProcess process;
  std::shared_ptr<platform::UINavigationController> navigation;
  std::shared_ptr<platform::UIWindow> window;
};

// The same with one of the two pages whose table is always in editing mode.
template <class Page>
class EditingPageTest : public ModulesTest {
 protected:
  void open() {
    page = platform::make<Page>();
    show(page);
    table = page->tableView();
  }
  // Releases everything that shows the page, and runs the pending work.
  void leave() {
    page = nullptr;
    table = nullptr;
    navigation = nullptr;
    window = nullptr;
    process.scheduler().advance(10);
  }

  std::shared_ptr<Page> page;
  std::shared_ptr<platform::UITableView> table;
};

}  // namespace zentrova::tests
