#include <gtest/gtest.h>
#include <limits>

#include "platform/uikit/drawing/UIKitState.h"
#include "platform/uikit/views/NSLayoutConstraint.h"
#include "platform/uikit/views/UIImageView.h"
#include "tests/root/ChromeFixture.h"
#include "tests/root/Pictures.h"

namespace zentrova::tests {
namespace {

using platform::NSLayoutAttribute;
using platform::UIImageView;

// --- The header ---

class Header : public ChromeTest {
 protected:
  static constexpr std::string_view bannerPath =
      "/var/jb/Library/PreferenceBundles/ZentrovaPrefs.bundle/Banner.png";

  std::shared_ptr<platform::UIView> header() { return page->table()->tableHeaderView(); }
  std::shared_ptr<UIImageView> banner() {
    return std::dynamic_pointer_cast<UIImageView>(header()->subviews().at(0));
  }
  // The active constraint of the banner for one attribute; empty if there is none.
  std::shared_ptr<platform::NSLayoutConstraint> constraint(NSLayoutAttribute attribute) {
    for (const auto& each : header()->constraints()) {
      if (each->firstItem() == banner() && each->firstAttribute() == attribute) return each;
    }
    return nullptr;
  }
  void expectConstraint(NSLayoutAttribute attribute, double constant) {
    const auto found = constraint(attribute);
    ASSERT_TRUE(found);
    EXPECT_TRUE(found->isActive());
    EXPECT_EQ(found->secondItem(), header());
    EXPECT_EQ(found->secondAttribute(), attribute);
    EXPECT_EQ(found->constant(), constant);
  }
  void expectEmptyHeader() {
    ASSERT_TRUE(header());
    EXPECT_EQ(header()->frame().height, 100);
    EXPECT_FALSE(banner()->image());
  }
};

TEST_F(Header, StandsAboveTheRowsWithTheWidthOfThePageAndAHeightOf100) {
  process.traits().screenWidth = 417;
  page = makePage();
  ASSERT_EQ(page->view()->frame().width, 417);
  ASSERT_TRUE(header());
  EXPECT_EQ(header()->frame(), (platform::Rect{0, 0, 417, 100}));
  EXPECT_GT(page->table()->rectForRowAtIndexPath({0, 0}).y, 100);
}

TEST_F(Header, ShowsTheBannerWithItsProportions) {
  process.tree().write(bannerPath, pngOf(200, 50));
  showNested();
  ASSERT_EQ(header()->subviews().size(), 1U);
  ASSERT_TRUE(banner());
  ASSERT_TRUE(banner()->image());
  EXPECT_EQ(banner()->image()->size(), (platform::Size{200, 50}));
  EXPECT_EQ(banner()->contentMode(), platform::UIViewContentMode::scaleAspectFit);
  EXPECT_EQ(static_cast<int>(banner()->contentMode()), 1);
}

TEST_F(Header, HoldsTheBannerByThreeConstraints) {
  showNested();
  EXPECT_FALSE(banner()->translatesAutoresizingMaskIntoConstraints());
  EXPECT_EQ(header()->constraints().size(), 3U);
  expectConstraint(NSLayoutAttribute::height, 0);
  expectConstraint(NSLayoutAttribute::leading, 50);
  expectConstraint(NSLayoutAttribute::trailing, -50);
}

TEST_F(Header, BannerKeepsItsDistanceFromBothEdges) {
  process.tree().write(bannerPath, pngOf(1000, 300));
  showNested();
  const double width = page->table()->frame().width;
  EXPECT_EQ(banner()->frame(), (platform::Rect{50, 0, width - 100, 100}));
  window->setFrame({0, 0, 820, 1180});
  window->layoutIfNeeded();
  EXPECT_EQ(banner()->frame(), (platform::Rect{50, 0, 720, 100}));
}

TEST_F(Header, StaysEmptyWithoutABanner) {
  showNested();
  expectEmptyHeader();
}

TEST_F(Header, StaysEmptyWhereTheBannerIsNoImageOrIsCutOff) {
  const std::string whole = pngOf(200, 50);
  for (const std::string& bytes :
       {std::string(), std::string("no image"), whole.substr(0, 20), whole.substr(0, 40)}) {
    process.tree().write(bannerPath, bytes);
    showNested();
    expectEmptyHeader();
  }
}

// The presenter draws the steps of the animation; the page sets only its end.
TEST_F(Header, TakesABannerThatIsDamagedInside) {
  std::string damaged = pngOf(200, 50);
  damaged[damaged.size() / 2] ^= 0x55;
  process.tree().write(bannerPath, damaged);
  showNested();
  EXPECT_EQ(header()->frame().height, 100);
}

TEST_F(Header, StaysEmptyWhereTheBannerIsHuge) {
  process.tree().write(bannerPath, hugePng());
  showNested();
  expectEmptyHeader();
}

TEST_F(Header, IsNoHigherForALargeBanner) {
  process.tree().write(bannerPath, pngOf(3000, 2000));
  showNested();
  EXPECT_EQ(banner()->image()->size(), (platform::Size{3000, 2000}));
  EXPECT_EQ(header()->frame().height, 100);
  EXPECT_EQ(banner()->frame().height, 100);
}

// --- The titles of the bars ---

class TitleOpacity : public ChromeTest {
 protected:
  void SetUp() override {
    ChromeTest::SetUp();
    showNested();
  }
  void scrollTo(double offset) { page->table()->setContentOffset({0, offset}); }
};

TEST_F(TitleOpacity, BothTitlesAreHiddenAtFirst) {
  EXPECT_EQ(outerOpacity(), 0);
  EXPECT_EQ(innerOpacity(), 0);
}

// The two operations use different levels on purpose.
TEST_F(TitleOpacity, SetUpHidesTheOuterTitleAndLayoutTheInner) {
  outer->navigationBar()->setTitleOpacity(1);
  inner->navigationBar()->setTitleOpacity(1);
  page->viewDidLayoutSubviews();
  EXPECT_EQ(innerOpacity(), 0);
  EXPECT_EQ(outerOpacity(), 1);
  inner->navigationBar()->setTitleOpacity(1);
  page->viewDidLoad();
  EXPECT_EQ(outerOpacity(), 0);
  EXPECT_EQ(innerOpacity(), 1);
}

TEST_F(TitleOpacity, EveryLayoutHidesTheInnerTitle) {
  inner->navigationBar()->setTitleOpacity(1);
  page->view()->setNeedsLayout();
  window->layoutIfNeeded();
  EXPECT_EQ(innerOpacity(), 0);
}

TEST_F(TitleOpacity, OffsetBelowZeroHidesTheOuterTitle) {
  for (const double offset : {-0.5, -100.0, -0.001, -std::numeric_limits<double>::infinity()}) {
    scrollTo(0);
    scrollTo(offset);
    EXPECT_EQ(outerOpacity(), 0) << offset;
  }
}

TEST_F(TitleOpacity, OffsetOfZeroOrMoreShowsTheOuterTitle) {
  for (const double offset : {0.0, 0.5, 300.0}) {
    scrollTo(-1);
    ASSERT_EQ(outerOpacity(), 0);
    scrollTo(offset);
    EXPECT_EQ(outerOpacity(), 1) << offset;
  }
}

TEST_F(TitleOpacity, ScrollingLeavesTheInnerTitleAlone) {
  inner->navigationBar()->setTitleOpacity(0.25);
  scrollTo(-1);
  scrollTo(20);
  EXPECT_EQ(innerOpacity(), 0.25);
}

TEST_F(TitleOpacity, TitleFadesForThreeTenthsOfASecond) {
  scrollTo(20);
  const auto shown = outer->navigationBar()->lastAnimation();
  ASSERT_TRUE(shown);
  EXPECT_EQ(shown->duration, 0.3);
  EXPECT_EQ(shown->kind, platform::ViewAnimationKind::change);
  scrollTo(-20);
  ASSERT_TRUE(outer->navigationBar()->lastAnimation());
  EXPECT_EQ(outer->navigationBar()->lastAnimation()->duration, 0.3);
  EXPECT_NE(outer->navigationBar()->lastAnimation()->identifier, shown->identifier);
}

TEST_F(TitleOpacity, EveryScrollStartsAnAnimation) {
  const auto animations = [] { return platform::UIKitState::current().makeAnimationIdentifier(); };
  scrollTo(10);
  const auto before = animations();
  scrollTo(20);
  scrollTo(30);
  scrollTo(40);
  EXPECT_EQ(animations(), before + 4);
}

TEST_F(TitleOpacity, ScrollArrivesByName) {
  scrollTo(20);
  outer->navigationBar()->setTitleOpacity(0.5);
  page->perform("scrollViewDidScroll:", {platform::Value(page->table())});
  EXPECT_EQ(outerOpacity(), 1);
}

TEST_F(TitleOpacity, PageIsTheDelegateOfTheScrollView) {
  EXPECT_EQ(page->table()->scrollView()->delegate(), page);
}

// The rows still use the page as the delegate while it follows the scrolling.
TEST_F(TitleOpacity, PageStaysTheDelegateOfTheTable) {
  EXPECT_EQ(page->table()->tableDelegate(), page);
}

TEST_F(TitleOpacity, PageOutOfNavigationHasNoTitlesToHide) {
  const auto alone = makePage();
  EXPECT_TRUE(alone->view());
  alone->viewDidLayoutSubviews();
  alone->table()->setContentOffset({0, 40});
  alone->table()->setContentOffset({0, -40});
}

TEST_F(TitleOpacity, PageInOneNavigationControllerHidesItsTitleByLayoutOnly) {
  showPage();
  const auto bar = page->navigationController()->navigationBar();
  EXPECT_EQ(bar->titleOpacity(), 0);
  bar->setTitleOpacity(0.5);
  scrollTo(40);
  EXPECT_EQ(bar->titleOpacity(), 0.5);
}

// --- The application's row "ControlCenter" ---

class ControlCenterStep : public ChromeTest {
 protected:
  void SetUp() override {
    ChromeTest::SetUp();
    row->setIdentifier("ControlCenter");
    hostList->keepSpecifiers(platform::makeSpecifiers({row}));
  }
  // The steps after it.
  void expectSetUp() {
    EXPECT_EQ(outerOpacity(), 0);
    EXPECT_EQ(page->table()->scrollView()->delegate(), page);
    EXPECT_TRUE(page->table()->tableHeaderView());
  }
  std::shared_ptr<platform::PSSpecifier> row = platform::PSSpecifier::preferenceSpecifierNamed(
      "Control Center", nullptr, std::nullopt, std::nullopt, std::nullopt, platform::PSLinkCell,
      std::nullopt);
};

TEST_F(ControlCenterStep, AsksTheApplicationToLoadWhatIsBehindTheRow) {
  showNested();
  ASSERT_EQ(hostList->loaded.size(), 1U);
  EXPECT_EQ(hostList->loaded[0], row);
}

TEST_F(ControlCenterStep, ExceptionOfTheApplicationIsSwallowed) {
  hostList->raised.emplace("NSInternalInconsistencyException", "no bundle");
  showNested();
  EXPECT_EQ(hostList->loaded.size(), 1U);
  expectSetUp();
}

TEST_F(ControlCenterStep, MissingRowIsAskedForAsNone) {
  hostList->keepSpecifiers(platform::makeSpecifiers({}));
  hostList->raised.emplace("NSInvalidArgumentException", "no row");
  showNested();
  ASSERT_EQ(hostList->loaded.size(), 1U);
  EXPECT_FALSE(hostList->loaded[0]);
  expectSetUp();
}

TEST_F(ControlCenterStep, ApplicationWithoutAListIsLeftAlone) {
  hostList = nullptr;
  showNested();
  expectSetUp();
}

TEST_F(ControlCenterStep, ApplicationThatDoesNotKnowTheStepIsLeftAlone) {
  page = makePage();
  inner = platform::make<HostNavigation>();
  inner->list = platform::make<platform::PSListController>();
  inner->pushViewController(page, false);
  outer = platform::make(&platform::UINavigationController::initWithRootViewController, inner);
  window = test_support::showInWindow(outer);
  expectSetUp();
}

TEST_F(ControlCenterStep, IsTakenOncePerPage) {
  showNested();
  page->viewDidAppear(false);
  page->view()->setNeedsLayout();
  window->layoutIfNeeded();
  EXPECT_EQ(hostList->loaded.size(), 1U);
}

TEST_F(ControlCenterStep, PageIsReleasedAllTheSame) {
  hostList->raised.emplace("NSInternalInconsistencyException", "no bundle");
  showNested();
  page->table()->setContentOffset({0, 40});
  const std::weak_ptr<ZVRRootListController> weak = page;
  page = nullptr;
  window = nullptr;
  outer = nullptr;
  inner = nullptr;
  process.scheduler().advance(10);
  EXPECT_TRUE(weak.expired());
}

}  // namespace
}  // namespace zentrova::tests
