#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/uikit/views/UILongPressGestureRecognizer.h"
#include "tests/platform/uikit/UIKitFixture.h"

namespace uikit_test {
namespace {

using namespace platform;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using State = UIGestureRecognizerState;

// The target of the recogniser.
class PressTarget : public Object {
  PLATFORM_CLASS(PressTarget)

 public:
  void handleLongPress(const std::shared_ptr<UIGestureRecognizer>& recognizer) {
    states.push_back(recognizer->state());
  }
  std::vector<State> states;
};

class UILongPressGestureRecognizerTest : public UIKitTest {
 protected:
  UILongPressGestureRecognizerTest() {
    process.classes().add(ClassBuilder<PressTarget>("NSObject")
                              .operation("handleLongPress:", &PressTarget::handleLongPress)
                              .build());
    press->addTarget(target, "handleLongPress:");
    press->setMinimumPressDuration(1.0);
    view->setFrame({100, 200, 300, 300});
    view->addGestureRecognizer(press);
  }

  std::shared_ptr<PressTarget> target = make<PressTarget>();
  std::shared_ptr<UIView> view = make<UIView>();
  std::shared_ptr<UILongPressGestureRecognizer> press = make<UILongPressGestureRecognizer>();
};

TEST_F(UILongPressGestureRecognizerTest, APressIsRecognisedWhenItsTimeHasPassed) {
  press->touchBegan({110, 220});
  advance(0.99);
  EXPECT_THAT(target->states, IsEmpty());
  advance(0.01);
  EXPECT_THAT(target->states, ElementsAre(State::began));
  EXPECT_TRUE(press->hasRecognized());
  advance(10);
  EXPECT_THAT(target->states, ElementsAre(State::began)) << "a press is recognised once";
  press->touchEnded();
  EXPECT_THAT(target->states, ElementsAre(State::began, State::ended));
}

TEST_F(UILongPressGestureRecognizerTest, AShorterPressIsNone) {
  press->touchBegan({110, 220});
  advance(0.5);
  press->touchEnded();
  advance(10);
  EXPECT_THAT(target->states, IsEmpty());
  EXPECT_FALSE(press->hasRecognized());
  EXPECT_EQ(press->state(), State::failed);
}

TEST_F(UILongPressGestureRecognizerTest, TheTimeOfAnEarlierTouchDoesNotCount) {
  press->touchBegan({110, 220});
  advance(0.8);
  press->touchEnded();
  press->touchBegan({110, 220});
  advance(0.8);
  EXPECT_THAT(target->states, IsEmpty());
  advance(0.2);
  EXPECT_THAT(target->states, ElementsAre(State::began));
}

TEST_F(UILongPressGestureRecognizerTest, AFingerThatWandersOffIsNoPress) {
  press->touchBegan({110, 220});
  press->touchMoved({115, 224});
  EXPECT_EQ(press->state(), State::possible);
  press->touchMoved({125, 220});
  advance(2);
  EXPECT_THAT(target->states, IsEmpty());
}

TEST_F(UILongPressGestureRecognizerTest, MovingAfterwardsIsAChange) {
  press->touchBegan({110, 220});
  advance(1);
  press->touchMoved({300, 300});
  press->touchCancelled();
  EXPECT_THAT(target->states, ElementsAre(State::began, State::changed, State::cancelled));
}

TEST_F(UILongPressGestureRecognizerTest, TheLocationIsInTheCoordinatesAskedFor) {
  press->touchBegan({110, 220});
  EXPECT_EQ(press->locationInView(view), (Point{10, 20}));
  view->setBounds({0, 50, 300, 300});
  EXPECT_EQ(press->locationInView(view), (Point{10, 70}));
  EXPECT_EQ(press->locationInView(nullptr), (Point{110, 220}));
}

TEST_F(UILongPressGestureRecognizerTest, ADisabledRecogniserSeesNothing) {
  press->touchBegan({110, 220});
  press->setEnabled(false);
  advance(2);
  press->touchBegan({110, 220});
  advance(2);
  EXPECT_THAT(target->states, IsEmpty());
}

TEST_F(UILongPressGestureRecognizerTest, ATargetOrARecogniserThatHasDiedIsNotCalled) {
  press->touchBegan({110, 220});
  target.reset();
  advance(1);
  EXPECT_EQ(press->state(), State::began);
  press->touchEnded();
  press->touchBegan({110, 220});
  view->removeGestureRecognizer(press);
  std::weak_ptr<UIGestureRecognizer> weak = press;
  press.reset();
  EXPECT_TRUE(weak.expired()) << "the timer does not keep it alive";
  advance(2);
}

TEST_F(UILongPressGestureRecognizerTest, ARecogniserBelongsToOneView) {
  const auto other = make<UIView>();
  other->addGestureRecognizer(press);
  EXPECT_THAT(view->gestureRecognizers(), IsEmpty());
  EXPECT_EQ(press->view(), other);
}

}  // namespace
}  // namespace uikit_test
