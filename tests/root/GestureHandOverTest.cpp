#include <gtest/gtest.h>

#include "platform/foundation/values/Exception.h"
#include "platform/preferences/PSTableCell.h"
#include "platform/uikit/controls/UISegmentedControl.h"
#include "tests/root/RootFixture.h"

namespace zentrova::tests {
namespace {

using platform::Dictionary;
using platform::UISegmentedControl;
using platform::Value;

class GestureHandOver : public RootTest {
 protected:
  static constexpr std::string_view kestrelleText =
      "Using gesture settings from Kestrelle as they are set to either \"Lower\" or \"Both\".";

  void SetUp() override {
    writeRoot();
    writePreferences(test_support::TestProcess::preferencePath, {{"gesture", 2}});
  }
  void kestrelle(const Dictionary& content) { writePreferences(kestrellePath, content); }

  std::shared_ptr<platform::PSTableCell> cell() {
    return page->cachedCellForSpecifierID("gestureSegmentCell");
  }
  static std::shared_ptr<UISegmentedControl> segmentsIn(const platform::UIView& view) {
    for (const auto& subview : view.subviews()) {
      if (auto found = std::dynamic_pointer_cast<UISegmentedControl>(subview)) return found;
      if (auto found = segmentsIn(*subview)) return found;
    }
    return nullptr;
  }
  bool isLocked() {
    return !cell()->isUserInteractionEnabled() && cell()->alpha() == 0.6 &&
           segmentsIn(*cell())->selectedSegmentIndex() == 0;
  }
  bool isUntouched() {
    return cell()->isUserInteractionEnabled() && cell()->alpha() == 1.0 &&
           segmentsIn(*cell())->selectedSegmentIndex() == 2;
  }
  void showAndWait() {
    showPage();
    process.scheduler().advance(1.0);
  }
  bool hasFooter() { return footerOf(page, "gestureGroupCell") == Value(kestrelleText); }
};

TEST_F(GestureHandOver, LocksWhereKestrelleIsSetToLower) {
  kestrelle({{"gesturesConfig", "0"}, {"useGestures", true}});
  showAndWait();
  EXPECT_TRUE(isLocked());
  EXPECT_TRUE(hasFooter());
}

TEST_F(GestureHandOver, LocksWhereKestrelleIsSetToBoth) {
  kestrelle({{"gesturesConfig", "2"}, {"useGestures", 1}});
  showAndWait();
  EXPECT_TRUE(isLocked());
}

TEST_F(GestureHandOver, LocksWhereTheConfigurationIsAbsent) {
  kestrelle({{"useGestures", true}});
  showAndWait();
  EXPECT_TRUE(isLocked());
  EXPECT_TRUE(hasFooter());
}

TEST_F(GestureHandOver, DoesNothingWhereKestrelleIsSetOtherwise) {
  for (const char* config : {"1", "3", "00", " 0", "", "2.0"}) {
    kestrelle({{"gesturesConfig", config}, {"useGestures", true}});
    showAndWait();
    EXPECT_TRUE(isUntouched()) << config;
    EXPECT_FALSE(hasFooter()) << config;
  }
}

TEST_F(GestureHandOver, DoesNothingWhereKestrellesGesturesAreOff) {
  for (const Value& use : {Value(false), Value(0), Value(2), Value(-1), Value("1"), Value()}) {
    kestrelle(Dictionary{{"gesturesConfig", "2"}, {"useGestures", use}});
    showAndWait();
    EXPECT_TRUE(isUntouched()) << use.description();
    EXPECT_FALSE(hasFooter()) << use.description();
  }
}

TEST_F(GestureHandOver, DoesNothingWithoutKestrelle) {
  showAndWait();
  EXPECT_TRUE(isUntouched());
  EXPECT_FALSE(hasFooter());
}

TEST_F(GestureHandOver, DoesNothingOnATablet) {
  kestrelle({{"gesturesConfig", "0"}, {"useGestures", true}});
  beTablet();
  showPage();
  window->layoutIfNeeded();
  const auto change = page->table()->lastChange();
  process.scheduler().advance(1.0);
  EXPECT_EQ(page->table()->lastChange(), change);
}

// The footer is set at once, the transition starts after 0.1 seconds, and the row is locked when
// the transition ends 0.3 seconds later.
TEST_F(GestureHandOver, GoesStepByStep) {
  kestrelle({{"gesturesConfig", "0"}, {"useGestures", true}});
  showPage();
  EXPECT_TRUE(hasFooter());
  EXPECT_TRUE(isUntouched());
  const auto table = page->table();
  process.scheduler().advance(0.0999);
  EXPECT_FALSE(table->lastAnimation());

  process.scheduler().advance(0.0002);
  ASSERT_TRUE(table->lastAnimation());
  EXPECT_EQ(table->lastAnimation()->kind, platform::ViewAnimationKind::crossDissolve);
  EXPECT_EQ(table->lastAnimation()->duration, 0.3);
  EXPECT_EQ(table->footerTitle(2), std::string(kestrelleText));
  window->layoutIfNeeded();
  EXPECT_TRUE(isUntouched());

  process.scheduler().advance(0.2997);
  EXPECT_TRUE(isUntouched());
  process.scheduler().advance(0.0003);
  EXPECT_TRUE(isLocked());
}

TEST_F(GestureHandOver, StoredValueOfTheRowIsNotChanged) {
  kestrelle({{"useGestures", true}});
  showAndWait();
  ASSERT_TRUE(isLocked());
  EXPECT_EQ(inFile("gesture"), Value(2));
  EXPECT_EQ(page->readPreferenceValue(page->specifierForID("gestureSegmentCell")), Value(2));
  for (const auto& write : process.files().takeWrites()) ADD_FAILURE() << write.path;
}

// The row itself is locked: the user cannot touch it.
TEST_F(GestureHandOver, LockedRowTakesNoTouch) {
  kestrelle({{"useGestures", true}});
  showAndWait();
  EXPECT_FALSE(segmentsIn(*cell())->userSelectSegment(1));
  EXPECT_EQ(inFile("gesture"), Value(2));
}

TEST_F(GestureHandOver, LockStaysWhenKestrelleLetsGo) {
  kestrelle({{"useGestures", true}});
  showAndWait();
  kestrelle({{"useGestures", false}});
  page->viewDidAppear(false);
  process.scheduler().advance(1.0);
  EXPECT_TRUE(isLocked());
  EXPECT_TRUE(hasFooter());
}

TEST_F(GestureHandOver, EveryAppearanceLooksAgain) {
  showAndWait();
  ASSERT_TRUE(isUntouched());
  kestrelle({{"useGestures", true}});
  page->viewDidAppear(false);
  process.scheduler().advance(1.0);
  EXPECT_TRUE(isLocked());
}

// The base class is called first, in every case.
TEST_F(GestureHandOver, ConfigurationThatIsNoTextRaises) {
  for (const Value& config : {Value(0), Value(true), Value(platform::Array{"0"})}) {
    kestrelle(Dictionary{{"gesturesConfig", config}, {"useGestures", true}});
    const auto controller = makePage();
    try {
      controller->viewDidAppear(false);
      ADD_FAILURE() << "nothing was raised for " << config.description();
    } catch (const platform::Exception& exception) {
      EXPECT_EQ(exception.name(), "NSInvalidArgumentException");
      EXPECT_NE(exception.reason().find("isEqualToString:]: unrecognized selector sent"),
                std::string::npos)
          << exception.reason();
    }
  }
}

TEST_F(GestureHandOver, KestrellesFileIsOnlyRead) {
  kestrelle({{"useGestures", true}});
  const auto before = process.tree().read(kestrellePath);
  showAndWait();
  EXPECT_EQ(process.tree().read(kestrellePath), before);
}

TEST_F(GestureHandOver, ListWithoutTheSegmentRowHasNothingToLock) {
  auto items = allItems();
  items.erase(items.begin() + 8);
  writeRoot(items);
  kestrelle({{"useGestures", true}});
  showAndWait();
  EXPECT_TRUE(hasFooter());
  EXPECT_EQ(cell(), nullptr);
}

TEST_F(GestureHandOver, ListWithoutTheGroupIsLockedAllTheSame) {
  auto items = allItems();
  items.erase(items.begin() + 6);
  writeRoot(items);
  kestrelle({{"useGestures", true}});
  showAndWait();
  EXPECT_TRUE(isLocked());
}

// Cells are made when their rows become visible: a row that was never visible has no cell to lock.
TEST_F(GestureHandOver, RowOutOfSightHasNothingToLock) {
  auto items = allItems();
  std::vector<Value> many;
  for (int index = 0; index < 60; ++index) {
    many.push_back(item("PSSwitchCell", "row" + std::to_string(index)));
  }
  items.insert(items.begin(), many.begin(), many.end());
  writeRoot(items);
  kestrelle({{"useGestures", true}});
  showAndWait();
  EXPECT_EQ(cell(), nullptr);
}

// The first segmented control in each direct subview of the cell, but no deeper or later ones.
TEST_F(GestureHandOver, FirstSegmentsOfEachDirectSubviewAreSet) {
  kestrelle({{"useGestures", true}});
  showPage();
  const auto makeSegments = [] {
    auto segments =
        platform::make(&UISegmentedControl::initWithItems, std::vector<std::string>{"a", "b", "c"});
    segments->setSelectedSegmentIndex(1);
    return segments;
  };
  const auto direct = makeSegments();
  const auto container = platform::make<platform::UIView>();
  const auto first = makeSegments();
  const auto second = makeSegments();
  const auto inner = platform::make<platform::UIView>();
  const auto deep = makeSegments();
  cell()->addSubview(direct);
  cell()->addSubview(container);
  container->addSubview(inner);
  inner->addSubview(deep);
  container->addSubview(first);
  container->addSubview(second);
  process.scheduler().advance(1.0);
  EXPECT_TRUE(isLocked());
  EXPECT_EQ(direct->selectedSegmentIndex(), 1);
  EXPECT_EQ(first->selectedSegmentIndex(), 0);
  EXPECT_EQ(second->selectedSegmentIndex(), 1);
  EXPECT_EQ(deep->selectedSegmentIndex(), 1);
}

TEST_F(GestureHandOver, PageThatIsLeftMeanwhileIsReleasedAfterwards) {
  kestrelle({{"useGestures", true}});
  const auto before = aliveWithoutPage();
  showPage();
  const std::weak_ptr<ZVRRootListController> watched = page;
  leavePage();
  EXPECT_FALSE(watched.expired());
  process.scheduler().advance(1.0);
  EXPECT_TRUE(watched.expired());
  EXPECT_EQ(platform::Object::liveCount(), before);
}

}  // namespace
}  // namespace zentrova::tests
