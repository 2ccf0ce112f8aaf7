#include "platform/uikit/views/UIView.h"
#include "tests/platform/uikit/UIKitFixture.h"

namespace uikit_test {
namespace {

using namespace platform;
using ::testing::ElementsAre;

// Counts the notifications of a view.
class WatchingView : public UIView {
 public:
  void tintColorDidChange() override { ++tintChanges; }
  void didMoveToSuperview() override { ++moves; }

  int tintChanges = 0;
  int moves = 0;
};

class UIViewTest : public UIKitTest {
 protected:
  std::shared_ptr<UIView> parent = make<UIView>();
  std::shared_ptr<WatchingView> child = make<WatchingView>();
  std::shared_ptr<WatchingView> grandchild = make<WatchingView>();
};

TEST_F(UIViewTest, EveryViewHasAnIdentityOfItsOwn) {
  std::set<std::uint64_t> identifiers;
  for (int i = 0; i < 100; ++i) identifiers.insert(make<UIView>()->nodeIdentifier());
  EXPECT_EQ(identifiers.size(), 100U);
}

TEST_F(UIViewTest, AViewLeavesItsSuperviewWhenItJoinsAnother) {
  const auto other = make<UIView>();
  parent->addSubview(child);
  other->addSubview(child);
  EXPECT_TRUE(parent->subviews().empty());
  EXPECT_EQ(child->superview(), other);
  EXPECT_EQ(child->moves, 2);
}

TEST_F(UIViewTest, RemovalTellsTheViewThatItMoved) {
  parent->addSubview(child);
  child->removeFromSuperview();
  EXPECT_EQ(child->moves, 2);
  EXPECT_EQ(child->superview(), nullptr);
  child->removeFromSuperview();
  EXPECT_EQ(child->moves, 2) << "a view without a superview does not move";
}

TEST_F(UIViewTest, NullAndCirclesArePassedOver) {
  parent->addSubview(nullptr);
  parent->addGestureRecognizer(nullptr);
  parent->addSubview(child);
  child->addSubview(parent);
  child->addSubview(child);
  EXPECT_THAT(parent->subviews(), ElementsAre(child));
  EXPECT_TRUE(child->subviews().empty());
}

TEST_F(UIViewTest, SubviewsKeepTheirOrder) {
  const auto a = make<UIView>();
  const auto b = make<UIView>();
  const auto c = make<UIView>();
  parent->addSubview(a);
  parent->addSubview(c);
  parent->insertSubview(b, 1);
  EXPECT_THAT(parent->subviews(), ElementsAre(a, b, c));
  parent->bringSubviewToFront(a);
  EXPECT_THAT(parent->subviews(), ElementsAre(b, c, a));
}

TEST_F(UIViewTest, ASuperviewOwnsItsSubviewsAndNotTheOtherWayRound) {
  std::weak_ptr<UIView> weakParent = parent;
  parent->addSubview(child);
  parent.reset();
  EXPECT_TRUE(weakParent.expired());
  EXPECT_EQ(child->superview(), nullptr);
}

TEST_F(UIViewTest, TintIsInheritedAndItsChangeReachesEveryDescendantAtOnce) {
  parent->addSubview(child);
  child->addSubview(grandchild);
  const auto red = UIColor::systemRedColor();
  parent->setTintColor(red);
  EXPECT_TRUE(sameColor(grandchild->tintColor(), red));
  EXPECT_EQ(child->tintChanges, 1);
  EXPECT_EQ(grandchild->tintChanges, 1);
}

TEST_F(UIViewTest, TheTintWithoutAnyoneSettingItIsTheSystemBlue) {
  EXPECT_EQ(parent->tintColor()->systemName(), "systemBlueColor");
  EXPECT_EQ(parent->ownTintColor(), nullptr);
}

TEST_F(UIViewTest, AnOwnTintShieldsFromTheInheritedOne) {
  parent->addSubview(child);
  child->addSubview(grandchild);
  child->setTintColor(UIColor::systemPinkColor());
  parent->setTintColor(UIColor::systemRedColor());
  EXPECT_EQ(grandchild->tintChanges, 1) << "the pink only";
  child->setTintColor(nullptr);
  EXPECT_EQ(grandchild->tintColor()->systemName(), "systemRedColor");
  EXPECT_EQ(grandchild->tintChanges, 2);
}

TEST_F(UIViewTest, JoiningASuperviewOfAnotherTintIsAChangeOfTint) {
  child->addSubview(grandchild);
  parent->setTintColor(UIColor::systemRedColor());
  parent->addSubview(child);
  EXPECT_EQ(grandchild->tintChanges, 1);
  const auto blue = make<UIView>();
  blue->addSubview(child);
  EXPECT_EQ(grandchild->tintChanges, 2);
}

TEST_F(UIViewTest, JoiningASuperviewOfTheSameTintIsNone) {
  parent->addSubview(child);
  parent->setTintColor(UIColor::systemBlueColor());
  EXPECT_EQ(child->tintChanges, 0);
}

TEST_F(UIViewTest, AChangeIsCountedOnTheViewThatChanged) {
  parent->addSubview(child);
  const std::uint64_t seen = UIKitState::current().changeCount();
  child->setAlpha(0.5);
  EXPECT_GT(child->lastChange(), seen);
  EXPECT_LE(parent->lastChange(), seen);
  const std::uint64_t after = UIKitState::current().changeCount();
  child->setAlpha(0.5);
  EXPECT_EQ(UIKitState::current().changeCount(), after) << "the same value is not a change";
}

TEST_F(UIViewTest, AChangeOfTheLayerIsAChangeOfTheView) {
  const auto layer = child->layer();
  const std::uint64_t seen = UIKitState::current().changeCount();
  layer->setCornerRadius(14.5);
  EXPECT_GT(child->lastChange(), seen);
  child.reset();
  layer->setCornerRadius(2);  // the view is gone and is not notified
  EXPECT_EQ(layer->cornerRadius(), 2);
}

TEST_F(UIViewTest, AlphaStaysBetweenNoneAndFull) {
  child->setAlpha(7);
  EXPECT_EQ(child->alpha(), 1);
  child->setAlpha(-1);
  EXPECT_EQ(child->alpha(), 0);
  child->setAlpha(std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(child->alpha(), 0);
}

TEST_F(UIViewTest, TouchesReachAViewWhoseAncestorsAllLetThemThrough) {
  parent->addSubview(child);
  EXPECT_TRUE(child->acceptsTouches());
  parent->setUserInteractionEnabled(false);
  EXPECT_FALSE(child->acceptsTouches());
  parent->setUserInteractionEnabled(true);
  parent->setAlpha(0);
  EXPECT_FALSE(child->acceptsTouches());
  parent->setAlpha(1);
  child->setHidden(true);
  EXPECT_FALSE(child->acceptsTouches());
}

TEST_F(UIViewTest, PointsConvertThroughFramesAndScrolledBounds) {
  parent->setFrame({10, 20, 100, 100});
  parent->setBounds({0, 30, 100, 100});
  child->setFrame({5, 50, 10, 10});
  parent->addSubview(child);
  EXPECT_EQ(child->convertPointToView({1, 1}, parent), (Point{6, 51}));
  EXPECT_EQ(child->convertPointToView({1, 1}, nullptr), (Point{16, 41}));
}

TEST_F(UIViewTest, AViewIsFoundByItsTag) {
  child->addSubview(grandchild);
  parent->addSubview(child);
  grandchild->setTag(7);
  EXPECT_EQ(parent->viewWithTag(7), grandchild);
  EXPECT_EQ(parent->viewWithTag(8), nullptr);
}

TEST_F(UIViewTest, NothingIsLeftAliveWhenATreeGoes) {
  const std::int64_t before = Object::liveCount();
  {
    const auto root = make<UIView>();
    root->addSubview(makeWithFrame<UIView>({0, 0, 5, 5}));
    root->subviews().front()->layer()->setMask(make<CALayer>());
  }
  EXPECT_EQ(Object::liveCount(), before);
}

}  // namespace
}  // namespace uikit_test
