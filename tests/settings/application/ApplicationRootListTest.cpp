#include "platform/foundation/objects/Process.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "settings/application/SettingsProcess.h"
#include "tests/settings/application/RootPageFixture.h"

namespace settings::test {
namespace {

// The application's own list, below the bundle's page.
class RootList : public RootPageTest {
 protected:
  void openAndGoBack() {
    open();
    const ActionResult went = back();
    EXPECT_TRUE(went) << went.message;
  }
  Json propertiesOf(const std::string& identifier) {
    return application().inspectRow(rowNode(identifier)).value("properties", Json::object());
  }
  Json bar() { return (*query().outerNavigation().node)["bar"]; }
  double opacity(const FoundNode& navigation) {
    return (*navigation.node)["bar"]["titleOpacity"].get<double>();
  }
};

TEST_F(RootList, OpensOnTheBundlesPage) {
  open();
  EXPECT_EQ(title(), "Zentrova");
  EXPECT_EQ(bar()["back"], "Settings");
}

TEST_F(RootList, LiesBelowTheBundlesPage) {
  openAndGoBack();
  EXPECT_EQ(title(), "Settings");
  EXPECT_TRUE(hasRow("ControlCenter"));
  EXPECT_EQ(row("Bundle")["title"], "Zentrova");
  EXPECT_FALSE(bar().contains("back"));
  EXPECT_FALSE(back());
}

TEST_F(RootList, RowOpensANewPageOfTheBundle) {
  open();
  const std::string first = query().page().id;
  ASSERT_TRUE(back());
  ASSERT_TRUE(tap("Bundle"));
  EXPECT_EQ(title(), "Zentrova");
  EXPECT_NE(query().page().id, first);
  EXPECT_FALSE(application().crash());
}

// A page that is opened again reads the file again.
TEST_F(RootList, NewPageShowsWhatIsStoredNow) {
  openAndGoBack();
  put("/var/jb/var/mobile/Library/Preferences/com.hollowmere.zentrovaprefs.plist",
      "<plist version=\"1.0\"><dict><key>presentationStyle</key><integer>1</integer></dict>"
      "</plist>");
  ASSERT_TRUE(tap("Bundle"));
  EXPECT_TRUE(hasRow("alwaysPresentFromTop"));
}

TEST_F(RootList, ControlCenterRowIsLoadedByTheBundlesPage) {
  openAndGoBack();
  EXPECT_EQ(propertiesOf("ControlCenter").value("isLoaded", false), true);
}

TEST_F(RootList, ControlCenterRowTakesNoTap) {
  openAndGoBack();
  EXPECT_EQ(row("ControlCenter")["selectable"], false);
  EXPECT_FALSE(tap("ControlCenter"));
}

TEST_F(RootList, PageOpensWithoutTheControlCenterRow) {
  ASSERT_TRUE(application().setTrait("controlCenterRow", "missing"));
  open();
  EXPECT_FALSE(application().crash());
  EXPECT_EQ(title(), "Zentrova");
  ASSERT_TRUE(back());
  EXPECT_FALSE(hasRow("ControlCenter"));
  EXPECT_TRUE(hasRow("Bundle"));
}

TEST_F(RootList, PageOpensWhereTheControlCenterRowRaises) {
  ASSERT_TRUE(application().setTrait("controlCenterRow", "raises"));
  open();
  EXPECT_FALSE(application().crash());
  EXPECT_EQ(title(), "Zentrova");
  ASSERT_TRUE(back());
  EXPECT_FALSE(propertiesOf("ControlCenter").contains("isLoaded"));
}

// The application raises, and the page catches the exception.
TEST_F(RootList, ControlCenterRowReallyRaises) {
  for (const char* trait : {"raises", "missing"}) {
    ASSERT_TRUE(application().setTrait("controlCenterRow", trait));
    open();
    application().runAtEdge("a test", [this] {
      const auto list = application().process()->inner()->valueForKey("_rootListController");
      const auto row = list.asObject()->perform("specifierForID:", {"ControlCenter"});
      list.asObject()->perform("lazyLoadSpecialBundleForSpecifier:", {row});
    });
    EXPECT_TRUE(application().crash()) << trait;
  }
}

TEST_F(RootList, TraitCountsFromTheNextProcessOn) {
  open();
  ASSERT_TRUE(application().setTrait("controlCenterRow", "missing"));
  ASSERT_TRUE(back());
  EXPECT_TRUE(hasRow("ControlCenter"));
  open();
  ASSERT_TRUE(back());
  EXPECT_FALSE(hasRow("ControlCenter"));
  ASSERT_TRUE(application().setTrait("controlCenterRow", "present"));
  openAndGoBack();
  EXPECT_TRUE(hasRow("ControlCenter"));
}

TEST_F(RootList, OtherValuesOfTheTraitAreRefused) {
  const ActionResult result = application().setTrait("controlCenterRow", "gone");
  EXPECT_FALSE(result);
  EXPECT_EQ(result.message,
            "invalid value for the trait controlCenterRow: \"gone\" (expected present, missing or "
            "raises)");
}

TEST_F(RootList, BundleThatCannotBeLoadedIsSaidAgainAtItsRow) {
  EXPECT_FALSE(application().device().remove(
      "/var/jb/Library/PreferenceBundles/ZentrovaPrefs.bundle/ZentrovaPrefs"));
  openAndGoBack();
  ASSERT_TRUE(tap("Bundle"));
  EXPECT_TRUE(page().contains("problem"));
}

// Both bars exist: the page's navigation controller is inside another one.
TEST_F(RootList, NavigationIsNested) {
  open();
  const FoundNode outer = query().outerNavigation();
  const FoundNode inner = query().innerNavigation();
  EXPECT_NE(outer.id, inner.id);
  EXPECT_EQ((*inner.node)["class"], "PSRootController");
  EXPECT_EQ(opacity(outer), 0);
  EXPECT_EQ(opacity(inner), 0);
}

TEST_F(RootList, ScrollingShowsTheOuterTitle) {
  open();
  const auto scroll = [this](double offset) {
    return application().perform(
        {{"action", "scroll"}, {"node", query().table().id}, {"offset", offset}});
  };
  ASSERT_TRUE(scroll(-0.5));
  EXPECT_EQ(opacity(query().outerNavigation()), 0);
  ASSERT_TRUE(scroll(0));
  EXPECT_EQ(opacity(query().outerNavigation()), 1);
  EXPECT_EQ(opacity(query().innerNavigation()), 0);
  ASSERT_TRUE(scroll(-0.5));
  EXPECT_EQ(opacity(query().outerNavigation()), 0);
}

// A page without its own setting inherits it from the page below.
TEST_F(RootList, PagesHaveLargeTitles) {
  open();
  EXPECT_EQ(bar()["largeTitle"], true);
  ASSERT_TRUE(tap("vibration"));
  EXPECT_EQ(title(), "Vibration");
  EXPECT_EQ(bar()["largeTitle"], true);
  EXPECT_EQ(bar()["back"], "Zentrova");
}

}  // namespace
}  // namespace settings::test
