#include <gtest/gtest.h>

#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/values/Exception.h"
#include "tests/root/RootFixture.h"

namespace zentrova::tests {
namespace {

using platform::UIViewController;
using Page = std::shared_ptr<UIViewController>;

// A fake page with state, looked up by name.
class StandInPage : public UIViewController {
  PLATFORM_CLASS(StandInPage)

 public:
  int visits = 0;
  bool cameAnimated = false;
  void viewDidAppear(bool animated) override {
    UIViewController::viewDidAppear(animated);
    ++visits;
    cameAnimated = animated;
  }
};

// The favourites page, which is not looked up by name. Records when it appears.
class WatchedFavorites : public ZVRFavoriteModules {
 public:
  bool cameAnimated = false;
  void viewDidAppear(bool animated) override {
    ZVRFavoriteModules::viewDidAppear(animated);
    cameAnimated = animated;
  }
};

// Its initialiser fails.
class RefusingPage : public UIViewController {
  PLATFORM_CLASS(RefusingPage)

 public:
  bool init() override { return false; }
};

struct SubPage {
  const char* action;
  const char* field;
  const char* className;
};

void PrintTo(const SubPage& page, std::ostream* out) {
  *out << page.action;
}

class SubPages : public RootTest {
 protected:
  static constexpr const char* customize = "ZVRCustomizeListController";

  void SetUp() override {
    writeRoot();
    // One that differs from the bundle's own.
    standInFor<StandInPage>(customize);
    showPage();
  }
  template <class T>
  void standInFor(const char* name) {
    process.classes().remove(name);
    process.classes().add(platform::ClassBuilder<T>(name, "UIViewController").build());
  }
  Page top() { return page->navigationController()->topViewController(); }
  std::size_t depth() { return page->navigationController()->viewControllers().size(); }
  void back() { page->navigationController()->popViewControllerAnimated(true); }
};

class EachSubPage : public SubPages, public testing::WithParamInterface<SubPage> {
 protected:
  void open() { page->perform(GetParam().action); }
  Page field() { return page->valueForKey(GetParam().field).as<UIViewController>(); }
};

TEST_P(EachSubPage, IsMadeOnItsFirstOpening) {
  EXPECT_FALSE(field());
  open();
  ASSERT_EQ(depth(), 2U);
  EXPECT_EQ(top(), field());
  EXPECT_EQ(top()->objectClass().name(), GetParam().className);
}

TEST_P(EachSubPage, IsTheSameAtEveryLaterOpening) {
  open();
  const Page first = top();
  back();
  EXPECT_EQ(top(), page);
  open();
  EXPECT_EQ(top(), first);
}

TEST_P(EachSubPage, IsKeptWhileItIsNotShown) {
  open();
  const std::weak_ptr<UIViewController> weak = top();
  back();
  EXPECT_FALSE(weak.expired());
  leavePage();
  EXPECT_TRUE(weak.expired());
}

TEST_P(EachSubPage, IsNotMadeWhereTheFieldHasOne) {
  open();
  const Page first = top();
  leavePage();
  showPage();
  page->setValueForKey(platform::Value(first), GetParam().field);
  open();
  EXPECT_EQ(top(), first);
}

TEST_P(EachSubPage, IsMadeAnewWhereTheFieldWasCleared) {
  open();
  const Page first = top();
  back();
  page->setValueForKey({}, GetParam().field);
  open();
  EXPECT_NE(top(), first);
  EXPECT_EQ(top()->objectClass().name(), GetParam().className);
}

TEST_P(EachSubPage, RaisesWhereItIsOpenAlready) {
  open();
  EXPECT_THROW(open(), platform::Exception);
  EXPECT_EQ(depth(), 2U);
}

TEST_P(EachSubPage, IsMadeAndKeptWithoutNavigation) {
  leavePage();
  page = makePage();
  open();
  EXPECT_TRUE(field());
}

INSTANTIATE_TEST_SUITE_P(
    All, EachSubPage,
    testing::Values(SubPage{"showFavoriteModulesViewController", "favoriteModulesViewController",
                            "ZVRFavoriteModules"},
                    SubPage{"showModuleArrangeViewController", "arrangeModulesViewController",
                            "ZVRArrangeModulesViewController"},
                    SubPage{"showCustomizeViewController", "customizeViewController",
                            "ZVRCustomizeListController"}));

TEST_F(SubPages, CustomizePageKeepsItsState) {
  page->showCustomizeViewController();
  const auto customizePage = std::dynamic_pointer_cast<StandInPage>(top());
  ASSERT_TRUE(customizePage);
  back();
  page->showCustomizeViewController();
  EXPECT_EQ(top(), customizePage);
  EXPECT_EQ(customizePage->visits, 2);
}

TEST_F(SubPages, EveryOneComesWithAnimation) {
  page->showCustomizeViewController();
  EXPECT_TRUE(std::dynamic_pointer_cast<StandInPage>(top())->cameAnimated);
  back();
  standInFor<StandInPage>("ZVRArrangeModulesViewController");
  page->showModuleArrangeViewController();
  EXPECT_TRUE(std::dynamic_pointer_cast<StandInPage>(top())->cameAnimated);
  back();
  const auto favorites = platform::make<WatchedFavorites>();
  page->setFavoriteModulesViewController(favorites);
  page->showFavoriteModulesViewController();
  EXPECT_TRUE(favorites->cameAnimated);
}

TEST_F(SubPages, ArrangeAndCustomizeAreFoundByName) {
  standInFor<StandInPage>("ZVRArrangeModulesViewController");
  page->showModuleArrangeViewController();
  EXPECT_TRUE(std::dynamic_pointer_cast<StandInPage>(top()));
}

TEST_F(SubPages, FavoritesAreFoundDirectly) {
  standInFor<StandInPage>("ZVRFavoriteModules");
  page->showFavoriteModulesViewController();
  EXPECT_TRUE(std::dynamic_pointer_cast<ZVRFavoriteModules>(top()));
}

TEST_F(SubPages, NothingOpensWhereTheClassIsNotThere) {
  process.classes().remove(customize);
  page->showCustomizeViewController();
  EXPECT_EQ(depth(), 1U);
  EXPECT_FALSE(page->customizeViewController());
  // It is looked up again.
  standInFor<StandInPage>(customize);
  page->showCustomizeViewController();
  EXPECT_EQ(depth(), 2U);
}

TEST_F(SubPages, NothingOpensWhereThePageRefusesToBeMade) {
  standInFor<RefusingPage>(customize);
  page->showCustomizeViewController();
  EXPECT_EQ(depth(), 1U);
}

TEST_F(SubPages, NothingOpensWhereTheClassIsNoPage) {
  process.classes().remove(customize);
  process.classes().add(platform::ClassBuilder<platform::Object>(customize, "NSObject").build());
  page->showCustomizeViewController();
  EXPECT_EQ(depth(), 1U);
}

}  // namespace
}  // namespace zentrova::tests
