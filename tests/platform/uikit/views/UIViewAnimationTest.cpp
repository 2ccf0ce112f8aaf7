#include "platform/foundation/values/Exception.h"
#include "platform/uikit/controllers/UINavigationBar.h"
#include "tests/platform/uikit/UIKitFixture.h"

namespace uikit_test {
namespace {

using namespace platform;

class UIViewAnimationTest : public UIKitTest {
 protected:
  std::shared_ptr<UIView> view = make<UIView>();
  int completions = 0;
};

TEST_F(UIViewAnimationTest, ValuesChangeAtOnceAndTheCompletionComesAfterTheDuration) {
  UIView::animateWithDuration(
      0.3, [&] { view->setAlpha(0); },
      [&](bool finished) {
        EXPECT_TRUE(finished);
        ++completions;
      });
  EXPECT_EQ(view->alpha(), 0);
  advance(0.29);
  EXPECT_EQ(completions, 0);
  advance(0.01);
  EXPECT_EQ(completions, 1);
  advance(10);
  EXPECT_EQ(completions, 1);
}

TEST_F(UIViewAnimationTest, AChangedViewRemembersTheAnimation) {
  const auto untouched = make<UIView>();
  UIView::animateWithDuration(0.3, [&] { view->setAlpha(0.6); });
  ASSERT_TRUE(view->lastAnimation().has_value());
  EXPECT_EQ(view->lastAnimation()->duration, 0.3);
  EXPECT_FALSE(untouched->lastAnimation().has_value());
  const std::uint64_t first = view->lastAnimation()->identifier;
  view->setAlpha(0.7);
  EXPECT_EQ(view->lastAnimation()->identifier, first) << "a plain change is not a new animation";
  UIView::animateWithDuration(0.3, [&] { view->setAlpha(0.6); });
  EXPECT_GT(view->lastAnimation()->identifier, first);
}

TEST_F(UIViewAnimationTest, TheOpacityOfABarsTitleIsAnimated) {
  const auto bar = make<UINavigationBar>();
  UIView::animateWithDuration(0.3, [&] { bar->perform("_setTitleOpacity:", {Value(0.0)}); });
  EXPECT_EQ(bar->titleOpacity(), 0);
  ASSERT_TRUE(bar->lastAnimation().has_value());
  EXPECT_EQ(bar->lastAnimation()->duration, 0.3);
}

TEST_F(UIViewAnimationTest, ATransitionIsRememberedByTheViewItself) {
  bool ran = false;
  UIView::transitionWithView(
      view, 0.3, UIViewAnimationOptionTransitionCrossDissolve, [&] { ran = true; },
      [&](bool) { ++completions; });
  EXPECT_TRUE(ran);
  ASSERT_TRUE(view->lastAnimation().has_value());
  EXPECT_EQ(view->lastAnimation()->kind, ViewAnimationKind::crossDissolve);
  EXPECT_EQ(completions, 0);
  advance(0.3);
  EXPECT_EQ(completions, 1);
}

TEST_F(UIViewAnimationTest, ATransitionWithoutAViewOrABlockStillCompletes) {
  UIView::transitionWithView(nullptr, 0.2, 0, nullptr, [&](bool) { ++completions; });
  advance(0.2);
  EXPECT_EQ(completions, 1);
}

TEST_F(UIViewAnimationTest, AnAnimationWithinAnotherHasItsOwnDuration) {
  const auto inner = make<UIView>();
  const auto outer = make<UIView>();
  UIView::animateWithDuration(1, [&] {
    UIView::animateWithDuration(0.2, [&] { inner->setAlpha(0); });
    outer->setAlpha(0);
  });
  EXPECT_EQ(inner->lastAnimation()->duration, 0.2);
  EXPECT_EQ(outer->lastAnimation()->duration, 1);
}

TEST_F(UIViewAnimationTest, ABlockThatRaisesEndsTheAnimation) {
  EXPECT_THROW(UIView::animateWithDuration(1, [] { raiseInvalidArgument("no"); }), Exception);
  view->setAlpha(0);
  EXPECT_FALSE(view->lastAnimation().has_value());
}

TEST_F(UIViewAnimationTest, ANegativeDurationIsNone) {
  UIView::animateWithDuration(
      -1, [&] { view->setAlpha(0); }, [&](bool) { ++completions; });
  EXPECT_EQ(view->lastAnimation()->duration, 0);
  EXPECT_EQ(completions, 0) << "the completion always waits for the run loop";
  advance(0);
  EXPECT_EQ(completions, 1);
}

}  // namespace
}  // namespace uikit_test
