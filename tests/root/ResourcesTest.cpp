#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>

#include "platform/uikit/views/UIImageView.h"
#include "tests/root/ResourcesFixture.h"

namespace zentrova::tests {

std::string ResourcesTest::source(const std::string& name) {
  std::ifstream in(std::string(ZENTROVA_RESOURCES) + "/" + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

namespace {

using platform::Dictionary;
using platform::Value;

class Resources : public ResourcesTest {};

TEST_F(Resources, ArePropertyListsInThePlatformsForm) {
  EXPECT_EQ(platform::writeXmlPropertyList(list("Info.plist")).bytes, source("Info.plist"));
  for (const std::string& name : lists()) {
    EXPECT_EQ(platform::writeXmlPropertyList(list(name)).bytes, source(name)) << name;
  }
}

TEST_F(Resources, InfoNamesThePrincipalClassAndTheCode) {
  const auto info = list("Info.plist");
  EXPECT_EQ(info.valueForKey("NSPrincipalClass"), Value("ZVRRootListController"));
  EXPECT_EQ(info.valueForKey("CFBundleExecutable"), Value("ZentrovaPrefs"));
  EXPECT_EQ(info.valueForKey("CFBundleIdentifier"), Value("com.hollowmere.zentrovaprefs"));
}

TEST_F(Resources, RootHoldsTheRowsThatThePageWorksWith) {
  const auto controller = makePage();
  const auto rows = identifiersOf(controller);
  for (const char* identifier :
       {"presentationGroup", "presentationText", "presentationStyle", "presentFullyExpanded",
        "gestureGroupCell", "gestureText", "gestureSegmentCell"}) {
    EXPECT_TRUE(controller->specifierForID(identifier)) << identifier;
  }
  EXPECT_EQ(controller->title(), "Zentrova");
  EXPECT_FALSE(controller->problem());
}

TEST_F(Resources, NoRowHasAProblem) {
  const auto controller = makePage();
  for (const auto& row : *controller->specifiers()) {
    EXPECT_EQ(row->problem(), std::nullopt) << row->identifier().value_or("");
  }
}

TEST_F(Resources, RootUsesEveryKindOfRow) {
  std::set<std::string> kinds;
  for (const auto& row : items("Root.plist")) kinds.insert(*row.valueForKey("cell").text());
  EXPECT_EQ(kinds, (std::set<std::string>{"PSButtonCell", "PSEditTextCell", "PSGroupCell",
                                          "PSLinkCell", "PSLinkListCell", "PSSecureEditTextCell",
                                          "PSSegmentCell", "PSSliderCell", "PSStaticTextCell",
                                          "PSSwitchCell", "PSTitleValueCell"}));
}

TEST_F(Resources, IdentifiersAndKeysAreUnique) {
  std::set<std::string> identifiers;
  std::set<std::string> keys;
  for (const std::string& name : lists()) {
    for (const auto& row : items(name)) {
      ASSERT_TRUE(row.valueForKey("id").isString());
      EXPECT_TRUE(identifiers.insert(*row.valueForKey("id").text()).second)
          << *row.valueForKey("id").text();
      if (const auto key = row.valueForKey("key").text()) {
        EXPECT_TRUE(keys.insert(*key).second) << *key;
        EXPECT_EQ(row.valueForKey("defaults"), Value("com.hollowmere.zentrovaprefs")) << *key;
      }
    }
  }
}

// A row without a default shows nothing until it is set. Only text rows may lack one.
TEST_F(Resources, EveryKeyButThoseOfTextsHasADefault) {
  for (const std::string& name : lists()) {
    for (const auto& row : items(name)) {
      const auto cell = row.valueForKey("cell").text();
      if (!row.contains("key") || cell == "PSEditTextCell" || cell == "PSSecureEditTextCell") {
        continue;
      }
      EXPECT_TRUE(row.contains("default")) << row.valueForKey("key").description();
    }
  }
}

TEST_F(Resources, DefaultOfEachChoiceIsOneOfItsValues) {
  for (const std::string& name : lists()) {
    for (const auto& row : items(name)) {
      const Value values = row.valueForKey("validValues");
      if (values) {
        EXPECT_TRUE(values.asArray()->contains(row.valueForKey("default")))
            << row.valueForKey("key").description();
      }
    }
  }
}

// With three styles the page would show its two switches for a style without them.
TEST_F(Resources, StyleIsZeroOrOneAndZeroAtFirst) {
  const auto controller = makePage();
  controller->specifiers();
  const auto style = controller->specifierForID("presentationStyle");
  EXPECT_EQ(style->validValues(), (platform::Array{0, 1}));
  EXPECT_EQ(style->propertyForKey("default"), Value(0));
}

// Every row works.
TEST_F(Resources, NoRowIsDisabledOrHasAProblem) {
  const auto controller = makePage();
  for (const auto& row : *controller->specifiers()) {
    EXPECT_TRUE(row->isEnabled()) << row->origin();
    EXPECT_EQ(row->problem(), std::nullopt) << row->origin();
  }
}

TEST_F(Resources, RowsOfSubPagesOpenThem) {
  const std::vector<std::pair<const char*, const char*>> pages = {
      {"favoriteModules", "ZVRFavoriteModules"},
      {"arrangeModules", "ZVRArrangeModulesViewController"},
      {"customize", "ZVRCustomizeListController"}};
  showPage();
  const auto navigation = page->navigationController();
  for (const auto& [identifier, className] : pages) {
    const auto row = page->specifierForID(identifier);
    page->performActionForSpecifier(row);
    const auto first = navigation->topViewController();
    EXPECT_EQ(first->className(), className);
    navigation->popViewControllerAnimated(true);
    page->performActionForSpecifier(row);
    EXPECT_EQ(navigation->topViewController(), first);
    navigation->popViewControllerAnimated(true);
  }
}

TEST_F(Resources, VersionRowAsksForTheVersion) {
  showPage();
  page->performActionForSpecifier(page->specifierForID("version"));
  const auto records = process.programs().records();
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0].request.path, "/bin/bash");
}

// Every row that can be tapped has a target that exists.
TEST_F(Resources, ActionsAndPagesOfEnabledRowsExist) {
  const auto controller = makePage();
  for (const auto& row : *controller->specifiers()) {
    if (!row->isEnabled()) continue;
    if (const auto action = row->buttonAction()) {
      EXPECT_TRUE(controller->respondsToSelector(*action)) << *action;
    }
    if (const auto detail = row->detailControllerClass()) {
      EXPECT_NE(process.classes().find(*detail), nullptr) << *detail;
    }
  }
}

// On a tablet the seven rows are dropped, and no group is left without rows.
TEST_F(Resources, NoGroupIsEmptyOnATablet) {
  beTablet();
  const auto controller = makePage();
  bool groupIsEmpty = false;
  for (const auto& row : *controller->specifiers()) {
    const bool group = row->cellType() == platform::PSGroupCell;
    EXPECT_FALSE(group && groupIsEmpty) << row->identifier().value_or("");
    groupIsEmpty = group;
  }
  EXPECT_FALSE(groupIsEmpty);
}

// Sharp on every device: three pixels per point of the drawing.
TEST_F(Resources, BannerIsAPictureOfItsDrawing) {
  process.tree().write(std::string(bundle) + "/Banner.png", source("Banner.png"));
  showPage();
  const auto banner = std::dynamic_pointer_cast<platform::UIImageView>(
      page->table()->tableHeaderView()->subviews().at(0));
  ASSERT_TRUE(banner->image());
  const auto width = std::to_string(banner->image()->pixelWidth() / 3);
  const auto height = std::to_string(banner->image()->pixelHeight() / 3);
  EXPECT_NE(source("Banner.svg").find("width=\"" + width + "\" height=\"" + height + "\""),
            std::string::npos);
}

TEST_F(Resources, VibrationPageOpensFromItsRow) {
  showPage();
  page->performActionForSpecifier(page->specifierForID("vibration"));
  const auto top = std::dynamic_pointer_cast<platform::PSListController>(
      page->navigationController()->topViewController());
  ASSERT_TRUE(top);
  EXPECT_EQ(top->className(), "ZVRVibrationListController");
  EXPECT_EQ(top->title(), "Vibration");
  top->setPreferenceValue(2, top->specifierForID("hapticStrength"));
  EXPECT_EQ(inFile("hapticStrength"), Value(2));
}

}  // namespace
}  // namespace zentrova::tests
