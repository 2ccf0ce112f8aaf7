#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/foundation/objects/NSNotificationCenter.h"
#include "tests/support/TestProcess.h"

namespace {

using platform::NSNotification;
using platform::NSNotificationCenter;
using platform::Object;
using testing::ElementsAre;
using testing::IsEmpty;

class NSNotificationCenterTest : public testing::Test {
 protected:
  NSNotificationCenter::Block note(const std::string& who) {
    return [this, who](const NSNotification& notification) {
      _seen.push_back(who + ":" + notification.name);
    };
  }

  NSNotificationCenter _center;
  std::vector<std::string> _seen;
};

TEST_F(NSNotificationCenterTest, TellsObserversOfTheNameInTheirOrder) {
  _center.addObserverForName("a", nullptr, note("one"));
  _center.addObserverForName("b", nullptr, note("two"));
  _center.addObserverForName(std::nullopt, nullptr, note("all"));
  _center.addObserverForName("a", nullptr, note("three"));
  _center.postNotificationName("a", nullptr);
  EXPECT_THAT(_seen, ElementsAre("one:a", "all:a", "three:a"));
}

TEST_F(NSNotificationCenterTest, TellsOfTheSenderAskedForOnly) {
  const auto sender = std::make_shared<Object>();
  _center.addObserverForName("a", sender, note("sender"));
  _center.postNotificationName("a", std::make_shared<Object>());
  _center.postNotificationName("a", nullptr);
  EXPECT_THAT(_seen, IsEmpty());
  _center.postNotificationName("a", sender);
  EXPECT_THAT(_seen, ElementsAre("sender:a"));
}

TEST_F(NSNotificationCenterTest, ASenderThatIsGoneStandsForNoOther) {
  auto sender = std::make_shared<Object>();
  _center.addObserverForName("a", sender, note("sender"));
  sender.reset();
  _center.postNotificationName("a", nullptr);
  EXPECT_THAT(_seen, IsEmpty());
}

TEST_F(NSNotificationCenterTest, ARemovedObserverIsNotToldAndItsBlockIsGone) {
  const auto held = std::make_shared<int>(1);
  const auto token = _center.addObserverForName(
      "a", nullptr, [this, held](const NSNotification&) { _seen.emplace_back("removed"); });
  _center.removeObserver(token);
  _center.removeObserver(token);
  _center.postNotificationName("a", nullptr);
  EXPECT_THAT(_seen, IsEmpty());
  EXPECT_EQ(held.use_count(), 1);
}

TEST_F(NSNotificationCenterTest, AnObserverMayRemoveItselfAndOthersWhileItIsTold) {
  std::shared_ptr<Object> second;
  std::shared_ptr<Object> first;
  first = _center.addObserverForName("a", nullptr, [&](const NSNotification&) {
    _seen.emplace_back("first");
    _center.removeObserver(first);
    _center.removeObserver(second);
  });
  second = _center.addObserverForName("a", nullptr, note("second"));
  _center.postNotificationName("a", nullptr);
  _center.postNotificationName("a", nullptr);
  EXPECT_THAT(_seen, ElementsAre("first"));
}

TEST_F(NSNotificationCenterTest, TheNotificationCarriesSenderAndInformation) {
  const auto sender = std::make_shared<Object>();
  std::shared_ptr<Object> object;
  platform::Dictionary information;
  _center.addObserverForName("a", nullptr, [&](const NSNotification& notification) {
    object = notification.object;
    information = notification.userInfo;
  });
  _center.postNotificationName("a", sender, platform::Dictionary{{"k", 1}});
  EXPECT_EQ(object, sender);
  EXPECT_EQ(information.valueForKey("k"), platform::Value(1));
}

TEST(DefaultNotificationCenter, IsOneForEachProcess) {
  test_support::TestProcess outer;
  NSNotificationCenter* first = &NSNotificationCenter::defaultCenter();
  EXPECT_EQ(first, &NSNotificationCenter::defaultCenter());
  test_support::TestProcess inner;
  EXPECT_NE(first, &NSNotificationCenter::defaultCenter());
}

}  // namespace
