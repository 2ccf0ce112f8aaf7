#include <gtest/gtest.h>
#include <set>

#include "appearance/ColorCodec.h"
#include "platform/uikit/drawing/UIColor.h"
#include "tests/root/ResourcesFixture.h"

namespace zentrova::tests {
namespace {

using platform::PSListController;

// The shipped customize page and its colour lists.
class AppearanceResources : public ResourcesTest {
 protected:
  std::shared_ptr<PSListController> makePageNamed(const char* className) {
    return std::dynamic_pointer_cast<PSListController>(
        process.classes().find(className)->makeInstance());
  }
  std::shared_ptr<PSListController> makeColorPage(int style) {
    const auto made = process.classes()
                          .find("ZVRCustomizeColorListViewController")
                          ->allocateAs<PSListController>();
    made->perform("initWithStyle:", {style});
    return made;
  }
  static std::vector<Dictionary> colors(const std::string& name) {
    std::vector<Dictionary> rows;
    for (const auto& row : items(name)) {
      if (row.contains("cellClass")) rows.push_back(row);
    }
    return rows;
  }
  static std::string text(const Dictionary& row, std::string_view key) {
    return row.valueForKey(key).text().value_or("");
  }
  static bool isWritten(const std::string& value) {
    return value.size() == 8 && value.find_first_not_of("0123456789ABCDEF") == std::string::npos;
  }
};

TEST_F(AppearanceResources, CustomizeHoldsTheRowsThatThePageWorksWith) {
  const auto made = makePageNamed("ZVRCustomizeListController");
  made->specifiers();
  EXPECT_EQ(made->title(), "Customize");
  EXPECT_FALSE(made->problem());
  EXPECT_TRUE(made->specifierForID("backgroundImageTextCell"));
  const std::vector<std::pair<std::string, std::string>> actions{
      {"backgroundImageCell", "backgroundViewButtonPressed"},
      {"globalColors", "showGlobalColors"},
      {"lightColors", "showLightColors"},
      {"darkColors", "showDarkColors"},
      {"restoreToggleSize", "restoreToggleSize"}};
  for (const auto& [identifier, action] : actions) {
    const auto row = made->specifierForID(identifier);
    ASSERT_TRUE(row) << identifier;
    EXPECT_EQ(row->buttonAction(), action);
    EXPECT_TRUE(row->isEnabled()) << identifier;
  }
}

TEST_F(AppearanceResources, CustomizeHoldsTheValuesOfTheToggles) {
  const auto made = makePageNamed("ZVRCustomizeListController");
  made->specifiers();
  const auto size = made->specifierForID("toggleModuleOffsetSize");
  ASSERT_TRUE(size);
  EXPECT_EQ(size->propertyForKey("key"), Value("toggleModuleOffsetSize"));
  EXPECT_EQ(size->propertyForKey("default"), Value(0.0));
  // The slider covers the size of a phone of any width.
  for (const double offset : {-29.75, -12.0, -5.75, 11.75}) {
    EXPECT_LE(size->propertyForKey("min").doubleValue(), offset);
    EXPECT_GE(size->propertyForKey("max").doubleValue(), offset);
  }
  const auto inset = made->specifierForID("insetStyle");
  ASSERT_TRUE(inset);
  EXPECT_EQ(inset->propertyForKey("key"), Value("insetStyle"));
  EXPECT_EQ(inset->propertyForKey("default"), Value(false));
}

TEST_F(AppearanceResources, ButtonSetsAnImageWhereThereIsNone) {
  const auto made = makePageNamed("ZVRCustomizeListController");
  made->specifiers();
  EXPECT_EQ(made->specifierForID("backgroundImageCell")->name(), "Set background image");
}

TEST_F(AppearanceResources, NoRowHasAProblem) {
  std::vector pages{makePageNamed("ZVRCustomizeListController")};
  for (const int style : {0, 1, 2}) pages.push_back(makeColorPage(style));
  for (const auto& made : pages) {
    ASSERT_TRUE(made->specifiers());
    EXPECT_FALSE(made->problem());
    for (const auto& row : *made->specifiers()) {
      EXPECT_EQ(row->problem(), std::nullopt) << row->identifier().value_or("");
    }
  }
}

TEST_F(AppearanceResources, EachColorListHasItsTitle) {
  const std::vector<std::string> titles{"Colors for Both", "Light Colors", "Dark Colors"};
  for (int style = 0; style < 3; ++style) {
    const auto made = makeColorPage(style);
    made->specifiers();
    EXPECT_EQ(made->title(), titles[static_cast<std::size_t>(style)]);
  }
}

TEST_F(AppearanceResources, ListsHoldTheirColors) {
  EXPECT_EQ(colors("GlobalColors.plist").size(), 24U);
  EXPECT_EQ(colors("LightColors.plist").size(), 12U);
  EXPECT_EQ(colors("DarkColors.plist").size(), 12U);
}

TEST_F(AppearanceResources, EachColorRowHasWhatItsCellReads) {
  for (const char* name : {"GlobalColors.plist", "LightColors.plist", "DarkColors.plist"}) {
    for (const auto& row : colors(name)) {
      EXPECT_EQ(text(row, "cellClass"), "HBColorPickerTableCell");
      EXPECT_EQ(text(row, "id"), text(row, "key"));
      EXPECT_NE(text(row, "title"), "") << text(row, "key");
      EXPECT_FALSE(row.contains("label")) << text(row, "key") << ": the cell draws its own title";
    }
  }
}

// A default has the form that the cell writes, or is the name of a system colour.
TEST_F(AppearanceResources, EachDefaultIsAColor) {
  for (const char* name : {"GlobalColors.plist", "LightColors.plist", "DarkColors.plist"}) {
    for (const auto& row : colors(name)) {
      const std::string value = text(row, "default");
      const bool isNamed = colorFromValueString(value)->systemName().has_value();
      EXPECT_TRUE(isNamed || isWritten(value)) << text(row, "key") << ": " << value;
    }
  }
}

// The colours of one appearance do not depend on the appearance.
TEST_F(AppearanceResources, DefaultsOfOneAppearanceAreFixed) {
  for (const char* name : {"LightColors.plist", "DarkColors.plist"}) {
    for (const auto& row : colors(name)) {
      EXPECT_TRUE(isWritten(text(row, "default"))) << text(row, "key");
    }
  }
}

// Light and dark have the same rows, and the list for both has each of them.
TEST_F(AppearanceResources, LightAndDarkColorsStandForGlobalOnes) {
  std::set<std::string> global;
  for (const auto& row : colors("GlobalColors.plist")) global.insert(text(row, "key"));
  const auto light = colors("LightColors.plist");
  const auto dark = colors("DarkColors.plist");
  ASSERT_EQ(light.size(), dark.size());
  for (std::size_t i = 0; i < light.size(); ++i) {
    const std::string key = text(light[i], "key");
    ASSERT_TRUE(key.ends_with("Light")) << key;
    const std::string base = key.substr(0, key.size() - 5);
    EXPECT_TRUE(global.contains(base)) << key;
    EXPECT_EQ(text(dark[i], "key"), base + "Dark");
    EXPECT_EQ(text(dark[i], "title"), text(light[i], "title"));
  }
}

}  // namespace
}  // namespace zentrova::tests
