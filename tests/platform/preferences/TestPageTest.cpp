// Shared by the tests of this folder; see PreferencesTest.h.

#include <algorithm>

#include "platform/foundation/objects/ClassBuilder.h"
#include "tests/platform/preferences/PreferencesTest.h"

namespace preferences_test {

using namespace platform;

PSSpecifiers TestPage::specifiers() {
  if (auto kept = keptSpecifiers()) return kept;
  if (!listName) return nullptr;
  ++timesBuilt;
  keepSpecifiers(loadSpecifiersFromPlistName(listName, self<TestPage>()));
  return keptSpecifiers();
}

Value TestPage::readPreferenceValue(const std::shared_ptr<PSSpecifier>& specifier) {
  const auto found = values.find(specifier->propertyForKey("key").text().value_or(""));
  return found == values.end() ? specifier->propertyForKey("default") : found->second;
}

void TestPage::setPreferenceValue(const Value& value,
                                  const std::shared_ptr<PSSpecifier>& specifier) {
  const auto key = specifier->propertyForKey("key").text().value_or("");
  values[key] = value;
  written.emplace_back(key, value);
}

void TestPage::openRow(const std::shared_ptr<PSSpecifier>& specifier) {
  performed.push_back("openRow " + specifier->identifier().value_or(""));
}

void TestPage::keepFixed(const Value& value, const std::shared_ptr<PSSpecifier>&) {
  written.emplace_back("fixed", value);
}

std::string listOf(const std::vector<std::string>& items, const std::string& more) {
  std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" +
                     more + "<key>items</key><array>";
  for (const auto& item : items) text += "<dict>" + item + "</dict>";
  return text + "</array></dict></plist>";
}

std::string textEntry(const std::string& key, const std::string& value) {
  return "<key>" + key + "</key><string>" + value + "</string>";
}

std::string row(const std::string& cell, const std::string& label, const std::string& more) {
  return textEntry("cell", cell) + textEntry("label", label) + more;
}

PreferencesTest::PreferencesTest() {
  auto& classes = test.classes();
  registerUIKitClasses(classes);
  registerPreferencesClasses(classes);
  classes.add(ClassBuilder<TestPage>("PSListController")
                  .operation("restart", &TestPage::restart)
                  .operation("openRow:", &TestPage::openRow)
                  .operation("fixedValue:", &TestPage::fixedValue)
                  .operation("keepFixed:specifier:", &TestPage::keepFixed)
                  .build());
  classes.add(ClassBuilder<RefusingPage>("UIViewController").build());
  classes.add(ClassBuilder<TapCell>("PSTableCell").operation("open", &TapCell::open).build());
  classes.add(ClassBuilder<RefusingCell>("PSTableCell").build());
  test.process().provide(std::make_shared<BundleInfo>(BundleInfo{bundle}));
}

void PreferencesTest::writeList(const std::string& name, const std::string& text) {
  test.tree().write(std::string(bundle) + "/" + name + ".plist", text);
}

void PreferencesTest::show(const std::vector<std::string>& items, const std::string& more) {
  writeList("Main", listOf(items, more));
  page = make<TestPage>();
  page->listName = "Main";
  navigation = make(&UINavigationController::initWithRootViewController, page);
  navigation->beginAppearanceTransition(true, false);
  navigation->endAppearanceTransition();
  layOut();
}

void PreferencesTest::layOut() {
  navigation->view()->layoutIfNeeded();
}

std::shared_ptr<PSSpecifier> PreferencesTest::specifier(const std::string& identifier) {
  return page->specifierForID(identifier);
}

std::shared_ptr<PSTableCell> PreferencesTest::cell(const std::string& identifier) {
  return page->cachedCellForSpecifierID(identifier);
}

IndexPath PreferencesTest::pathOf(const std::string& identifier) {
  return page->indexPathForSpecifier(specifier(identifier)).value_or(IndexPath{-1, -1});
}

bool PreferencesTest::tap(const std::string& identifier) {
  const bool done = page->table()->userTapRow(pathOf(identifier));
  layOut();
  return done;
}

std::vector<std::vector<std::string>> PreferencesTest::rowsShown() {
  std::vector<std::vector<std::string>> sections;
  const auto& table = page->table();
  for (std::int64_t section = 0; section < table->numberOfSections(); ++section) {
    auto& rows = sections.emplace_back();
    for (std::int64_t index = 0; index < table->numberOfRowsInSection(section); ++index) {
      rows.push_back(page->specifierAtIndexPath({section, index})->identifier().value_or(""));
    }
  }
  return sections;
}

// The lists in these tests are property lists.
TEST_F(PreferencesTest, TestPageShowsTheRowsOfItsList) {
  show({row("PSGroupCell", "First"), row("PSSwitchCell", "A"), row("PSButtonCell", "B")});
  EXPECT_EQ(rowsShown(), (std::vector<std::vector<std::string>>{{"A", "B"}}));
}

}  // namespace preferences_test
