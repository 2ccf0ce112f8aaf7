#include "platform/foundation/values/Exception.h"
#include "platform/uikit/controllers/UIAlertController.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "platform/uikit/controllers/UIViewController.h"
#include "platform/uikit/controllers/UIWindow.h"
#include "tests/platform/uikit/UIKitFixture.h"

namespace uikit_test {
namespace {

using namespace platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A page that records its life cycle in a shared list.
class Page : public UIViewController {
 public:
  Page(std::string name, std::vector<std::string>& calls) : _name(std::move(name)), _calls(calls) {}

  void viewDidLoad() override { note("did load"); }
  void viewWillAppear(bool) override { note("will appear"); }
  void viewDidAppear(bool) override { note("did appear"); }
  void viewWillDisappear(bool) override { note("will disappear"); }
  void viewDidDisappear(bool) override { note("did disappear"); }
  void viewDidLayoutSubviews() override { ++layouts; }

  int layouts = 0;

 private:
  void note(const std::string& what) { _calls.push_back(_name + " " + what); }

  std::string _name;
  std::vector<std::string>& _calls;
};

class UIViewControllerTest : public UIKitTest {
 protected:
  std::shared_ptr<Page> makePage(std::string name) {
    return std::make_shared<Page>(std::move(name), calls);
  }
  void show(const std::shared_ptr<UIViewController>& root) {
    window->setRootViewController(root);
    window->makeKeyAndVisible();
    window->layoutIfNeeded();
  }

  std::vector<std::string> calls;
  std::shared_ptr<UIWindow> window = make<UIWindow>();
  std::shared_ptr<UINavigationController> navigation = make<UINavigationController>();
};

TEST_F(UIViewControllerTest, TheViewIsMadeOnFirstUse) {
  const auto page = makePage("page");
  EXPECT_FALSE(page->isViewLoaded());
  EXPECT_THAT(calls, IsEmpty());
  EXPECT_EQ(page->view()->frame(), (Rect{0, 0, 390, 844}));
  EXPECT_EQ(page->view(), page->view());
  EXPECT_THAT(calls, ElementsAre("page did load"));
}

TEST_F(UIViewControllerTest, ATitleIsTheNavigationItemsToo) {
  const auto page = makePage("page");
  page->setTitle("Customize");
  EXPECT_EQ(page->navigationItem()->title(), "Customize");
  page->setTitle(std::nullopt);
  EXPECT_EQ(page->title(), std::nullopt);
  EXPECT_EQ(page->navigationItem()->title(), std::nullopt);
}

TEST_F(UIViewControllerTest, AWindowTellsItsRootThatItAppears) {
  const auto page = makePage("page");
  window->setRootViewController(page);
  EXPECT_THAT(calls, IsEmpty());
  window->makeKeyAndVisible();
  EXPECT_THAT(calls, ElementsAre("page did load", "page will appear", "page did appear"));
  EXPECT_EQ(page->view()->window(), window);
  window->makeKeyAndVisible();
  EXPECT_EQ(calls.size(), 3U) << "a visible page does not appear again";
}

TEST_F(UIViewControllerTest, LayoutOfTheViewTellsTheController) {
  const auto page = makePage("page");
  show(page);
  EXPECT_EQ(page->layouts, 1);
  window->layoutIfNeeded();
  EXPECT_EQ(page->layouts, 1);
  window->setFrame({0, 0, 500, 500});
  window->layoutIfNeeded();
  EXPECT_EQ(page->layouts, 2);
  EXPECT_EQ(page->view()->frame().size(), (Size{500, 500}));
}

TEST_F(UIViewControllerTest, PushingTellsBothPagesInTheirOrder) {
  navigation->pushViewController(makePage("a"), false);
  show(navigation);
  calls.clear();
  navigation->pushViewController(makePage("b"), true);
  EXPECT_THAT(calls, ElementsAre("b did load", "a will disappear", "b will appear",
                                 "a did disappear", "b did appear"));
}

TEST_F(UIViewControllerTest, PoppingTellsBothPagesInTheirOrder) {
  const auto a = makePage("a");
  const auto b = makePage("b");
  navigation->pushViewController(a, false);
  navigation->pushViewController(b, false);
  show(navigation);
  calls.clear();
  EXPECT_EQ(navigation->popViewControllerAnimated(true), b);
  EXPECT_THAT(calls, ElementsAre("a did load", "b will disappear", "a will appear",
                                 "b did disappear", "a did appear"));
  EXPECT_EQ(b->parentViewController(), nullptr);
  EXPECT_EQ(b->view()->superview(), nullptr);
  EXPECT_EQ(navigation->popViewControllerAnimated(true), nullptr) << "the last page stays";
}

TEST_F(UIViewControllerTest, PagesOfANavigationControllerOutOfSightDoNotAppear) {
  navigation->pushViewController(makePage("a"), true);
  navigation->pushViewController(makePage("b"), true);
  EXPECT_THAT(calls, IsEmpty());
  show(navigation);
  EXPECT_THAT(calls, ElementsAre("b did load", "b will appear", "b did appear"));
}

TEST_F(UIViewControllerTest, NoPageAndAPageTwiceAreNotPushed) {
  const auto page = makePage("a");
  navigation->pushViewController(nullptr, true);
  navigation->pushViewController(page, true);
  EXPECT_THROW(navigation->pushViewController(page, true), Exception);
  EXPECT_THAT(navigation->viewControllers(), ElementsAre(page));
}

TEST_F(UIViewControllerTest, ANavigationControllerMayStandInAnother) {
  const auto outer = make<UINavigationController>();
  const auto page = makePage("page");
  navigation->pushViewController(page, false);
  outer->pushViewController(navigation, false);
  show(outer);
  EXPECT_EQ(page->navigationController(), navigation);
  EXPECT_EQ(page->navigationController()->navigationController(), outer);
  EXPECT_EQ(outer->navigationController(), nullptr);
  EXPECT_THAT(calls, ElementsAre("page did load", "page will appear", "page did appear"));
  EXPECT_EQ(page->view()->window(), window);
  EXPECT_NE(navigation->navigationBar(), outer->navigationBar());
}

TEST_F(UIViewControllerTest, ThePageFillsTheSpaceBelowTheBar) {
  const auto page = makePage("page");
  navigation->pushViewController(page, false);
  show(navigation);
  EXPECT_EQ(page->view()->frame(), (Rect{0, 44, 390, 800}));
  navigation->setNavigationBarHidden(true);
  window->layoutIfNeeded();
  EXPECT_EQ(page->view()->frame(), (Rect{0, 0, 390, 844}));
  EXPECT_TRUE(navigation->navigationBar()->isHidden());
}

TEST_F(UIViewControllerTest, TheStackCanBeReplaced) {
  const auto a = makePage("a");
  const auto b = makePage("b");
  navigation->pushViewController(a, false);
  show(navigation);
  calls.clear();
  navigation->setViewControllers({nullptr, b}, false);
  EXPECT_EQ(navigation->topViewController(), b);
  EXPECT_EQ(a->parentViewController(), nullptr);
  EXPECT_THAT(calls, ElementsAre("b did load", "a will disappear", "b will appear",
                                 "a did disappear", "b did appear"));
}

TEST_F(UIViewControllerTest, AViewFindsTheControllerThatHoldsIt) {
  const auto page = makePage("page");
  const auto view = make<UIView>();
  EXPECT_EQ(view->viewControllerForAncestor(), nullptr);
  page->view()->addSubview(view);
  EXPECT_EQ(view->perform("_viewControllerForAncestor").asObject(), page);
}

TEST_F(UIViewControllerTest, TheContainingControllerIsReadByKey) {
  const auto page = makePage("page");
  EXPECT_TRUE(page->valueForKey("_parentViewController").isNone());
  navigation->pushViewController(page, false);
  EXPECT_EQ(page->valueForKey("_parentViewController").asObject(), navigation);
}

TEST_F(UIViewControllerTest, APageIsPresentedOverTheOutermostController) {
  const auto page = makePage("page");
  const auto picker = makePage("picker");
  navigation->pushViewController(page, false);
  show(navigation);
  calls.clear();
  bool completed = false;
  page->presentViewController(picker, true, [&] { completed = true; });
  EXPECT_EQ(navigation->presentedViewController(), picker);
  EXPECT_EQ(page->presentedViewController(), picker);
  EXPECT_EQ(picker->presentingViewController(), navigation);
  EXPECT_EQ(picker->view()->window(), window);
  EXPECT_THAT(calls, ElementsAre("picker did load", "picker will appear", "picker did appear"));
  EXPECT_FALSE(completed);
  advance(controllerTransitionDuration);
  EXPECT_TRUE(completed);
}

TEST_F(UIViewControllerTest, APresentedPageIsDismissedByItselfOrByItsPresenter) {
  const auto page = makePage("page");
  show(page);
  for (const bool byItself : {true, false}) {
    const auto picker = makePage("picker");
    page->presentViewController(picker, false);
    calls.clear();
    int completions = 0;
    const auto& dismissing = byItself ? picker : page;
    dismissing->dismissViewControllerAnimated(true, [&] { ++completions; });
    EXPECT_EQ(page->presentedViewController(), nullptr);
    EXPECT_EQ(picker->presentingViewController(), nullptr);
    EXPECT_EQ(picker->view()->superview(), nullptr);
    EXPECT_THAT(calls, ElementsAre("picker will disappear", "picker did disappear"));
    advance(1);
    EXPECT_EQ(completions, 1);
  }
}

TEST_F(UIViewControllerTest, ASecondPresentationIsRefusedWithALineInTheLog) {
  const auto page = makePage("page");
  const auto picker = makePage("picker");
  show(page);
  page->presentViewController(picker, false);
  page->presentViewController(makePage("other"), false);
  page->presentViewController(nullptr, false);
  EXPECT_EQ(page->presentedViewController(), picker);
  ASSERT_EQ(process.log().entries().size(), 1U);
  EXPECT_THAT(process.log().entries()[0].message, ::testing::HasSubstr("Attempt to present"));
}

TEST_F(UIViewControllerTest, DismissingTheLowerPageTakesThoseAboveIt) {
  const auto page = makePage("page");
  const auto picker = makePage("picker");
  const auto alert = makePage("alert");
  show(page);
  page->presentViewController(picker, false);
  picker->presentViewController(alert, false);
  calls.clear();
  page->dismissViewControllerAnimated(false);
  EXPECT_THAT(calls, ElementsAre("alert will disappear", "alert did disappear",
                                 "picker will disappear", "picker did disappear"));
  EXPECT_EQ(picker->presentedViewController(), nullptr);
}

TEST_F(UIViewControllerTest, NothingStaysAliveWhenTheWindowGoes) {
  const std::int64_t before = Object::liveCount();
  {
    const auto otherWindow = make<UIWindow>();
    const auto stack = make<UINavigationController>();
    stack->pushViewController(makePage("a"), false);
    stack->pushViewController(makePage("b"), false);
    otherWindow->setRootViewController(stack);
    otherWindow->makeKeyAndVisible();
    otherWindow->layoutIfNeeded();
    stack->presentViewController(makePage("c"), false);
    stack->popViewControllerAnimated(false);
  }
  EXPECT_EQ(Object::liveCount(), before);
}

class UIAlertControllerTest : public UIViewControllerTest {
 protected:
  UIAlertControllerTest() {
    show(page);
    add("Change image", UIAlertActionStyle::standard);
    add("Clear image", UIAlertActionStyle::standard);
  }
  void add(const std::string& title, UIAlertActionStyle style) {
    alert->addAction(UIAlertAction::actionWithTitle(
        title, style, [this](const auto& action) { chosen.push_back(*action->title()); }));
  }

  std::shared_ptr<UIViewController> page = make<UIViewController>();
  std::shared_ptr<UIAlertController> alert = UIAlertController::alertControllerWithTitle(
      "What would you like to do?", "Clearing the image will return to stock look.",
      UIAlertControllerStyle::actionSheet);
  std::vector<std::string> chosen;
};

TEST_F(UIAlertControllerTest, AChoiceDismissesTheSheetAndRunsItsHandler) {
  page->presentViewController(alert, true);
  EXPECT_TRUE(alert->userChoose(1));
  EXPECT_THAT(chosen, ElementsAre("Clear image"));
  EXPECT_EQ(page->presentedViewController(), nullptr);
  EXPECT_FALSE(alert->userChoose(1)) << "it is no longer shown";
}

TEST_F(UIAlertControllerTest, AHandlerMayPresentAnotherPage) {
  const auto picker = make<UIViewController>();
  alert->addAction(UIAlertAction::actionWithTitle(
      "Pick", UIAlertActionStyle::standard,
      [&](const auto&) { page->presentViewController(picker, true); }));
  page->presentViewController(alert, true);
  EXPECT_TRUE(alert->userChoose(2));
  EXPECT_EQ(page->presentedViewController(), picker);
}

TEST_F(UIAlertControllerTest, AChoiceThatIsNotThereIsRefused) {
  page->presentViewController(alert, true);
  EXPECT_FALSE(alert->userChoose(-1));
  EXPECT_FALSE(alert->userChoose(2));
  EXPECT_EQ(page->presentedViewController(), alert);
}

TEST_F(UIAlertControllerTest, ClosingWithoutAChoiceIsTheCancelAction) {
  page->presentViewController(alert, true);
  EXPECT_FALSE(alert->userCancel()) << "there is no cancel action";
  add("Cancel", UIAlertActionStyle::cancel);
  EXPECT_TRUE(alert->userCancel());
  EXPECT_THAT(chosen, ElementsAre("Cancel"));
}

TEST_F(UIAlertControllerTest, ThereIsOneCancelActionAtMost) {
  add("Cancel", UIAlertActionStyle::cancel);
  EXPECT_THROW(add("Cancel", UIAlertActionStyle::cancel), Exception);
  alert->addAction(nullptr);
  EXPECT_EQ(alert->actions().size(), 3U);
}

TEST_F(UIAlertControllerTest, AnActionWithoutAHandlerJustCloses) {
  alert->addAction(UIAlertAction::actionWithTitle("OK", UIAlertActionStyle::standard, nullptr));
  page->presentViewController(alert, false);
  EXPECT_TRUE(alert->userChoose(2));
}

}  // namespace
}  // namespace uikit_test
