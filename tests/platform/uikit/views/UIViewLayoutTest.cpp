#include "platform/foundation/values/Exception.h"
#include "platform/uikit/views/UIImageView.h"
#include "platform/uikit/views/UILabel.h"
#include "tests/platform/uikit/UIKitFixture.h"

namespace uikit_test {
namespace {

using namespace platform;

class UIViewLayoutTest : public UIKitTest {
 protected:
  std::shared_ptr<UIView> addChild(Rect frame, std::uint32_t mask) {
    auto child = makeWithFrame<UIView>(frame);
    child->setAutoresizingMask(mask);
    parent->addSubview(child);
    return child;
  }

  std::shared_ptr<UIView> parent = makeWithFrame<UIView>({0, 0, 100, 100});
};

TEST_F(UIViewLayoutTest, WithoutAMaskASubviewKeepsItsFrame) {
  const auto child = addChild({10, 10, 20, 20}, UIViewAutoresizingNone);
  parent->setFrame({0, 0, 300, 300});
  EXPECT_EQ(child->frame(), (Rect{10, 10, 20, 20}));
}

TEST_F(UIViewLayoutTest, FlexibleWidthAndHeightTakeAllThatTheParentGrows) {
  // The value 18 is flexible width plus flexible height.
  const auto child = addChild({10, 20, 30, 40}, 18);
  parent->setFrame({0, 0, 150, 90});
  EXPECT_EQ(child->frame(), (Rect{10, 20, 80, 30}));
}

TEST_F(UIViewLayoutTest, ASubviewOfTheParentsSizeFollowsItFromNothing) {
  parent->setFrame({});
  const auto child = addChild({0, 0, 0, 0}, 18);
  parent->setFrame({5, 5, 29, 29});
  EXPECT_EQ(child->frame(), (Rect{0, 0, 29, 29}));
}

TEST_F(UIViewLayoutTest, AFlexibleLeftMarginKeepsTheRightEdge) {
  const auto child = addChild({70, 0, 20, 20}, UIViewAutoresizingFlexibleLeftMargin);
  parent->setFrame({0, 0, 200, 100});
  EXPECT_EQ(child->frame(), (Rect{170, 0, 20, 20}));
}

TEST_F(UIViewLayoutTest, FlexiblePartsShareTheGrowthInProportion) {
  const auto child = addChild({25, 0, 50, 10}, UIViewAutoresizingFlexibleLeftMargin |
                                                   UIViewAutoresizingFlexibleWidth |
                                                   UIViewAutoresizingFlexibleRightMargin);
  parent->setFrame({0, 0, 200, 100});
  EXPECT_EQ(child->frame(), (Rect{50, 0, 100, 10}));
}

TEST_F(UIViewLayoutTest, AFrameOfNegativeSizeIsEmpty) {
  parent->setFrame({0, 0, -5, std::numeric_limits<double>::quiet_NaN()});
  EXPECT_EQ(parent->frame(), (Rect{0, 0, 0, 0}));
}

// Like the banner of a page: as high as the header, 50 points from each side.
TEST_F(UIViewLayoutTest, AnImageViewIsPlacedWithinAHeader) {
  const auto header = makeWithFrame<UIView>({0, 0, 390, 100});
  const auto image = make<UIImageView>();
  image->setTranslatesAutoresizingMaskIntoConstraints(false);
  header->addSubview(image);
  NSLayoutConstraint::activateConstraints(
      {image->heightAnchor().constraintEqualToAnchor(header->heightAnchor()),
       image->leadingAnchor().constraintEqualToAnchor(header->leadingAnchor(), 50),
       image->trailingAnchor().constraintEqualToAnchor(header->trailingAnchor(), -50)});
  header->layoutIfNeeded();
  EXPECT_EQ(image->frame(), (Rect{50, 0, 290, 100}));
  header->setFrame({0, 0, 800, 120});
  header->layoutIfNeeded();
  EXPECT_EQ(image->frame(), (Rect{50, 0, 700, 120}));
}

TEST_F(UIViewLayoutTest, FourPinnedEdgesFillTheView) {
  const auto table = make<UITableView>();
  table->setTranslatesAutoresizingMaskIntoConstraints(false);
  parent->addSubview(table);
  NSLayoutConstraint::activateConstraints(
      {table->topAnchor().constraintEqualToAnchor(parent->topAnchor()),
       table->leadingAnchor().constraintEqualToAnchor(parent->leadingAnchor()),
       table->bottomAnchor().constraintEqualToAnchor(parent->bottomAnchor()),
       table->trailingAnchor().constraintEqualToAnchor(parent->trailingAnchor())});
  parent->layoutIfNeeded();
  EXPECT_EQ(table->frame(), (Rect{0, 0, 100, 100}));
  parent->setFrame({7, 7, 390, 700});
  parent->layoutIfNeeded();
  EXPECT_EQ(table->frame(), (Rect{0, 0, 390, 700}));
}

// Like the title of a colour row: vertically centred in the cell, 10 points from its leading edge,
// and 10 points before the trailing edge of a view inside another view.
TEST_F(UIViewLayoutTest, AConstraintMayReachIntoAnotherBranch) {
  const auto content = addChild({0, 0, 80, 44}, 0);
  const auto label = make<UILabel>();
  label->setText("Accent");
  label->setTranslatesAutoresizingMaskIntoConstraints(false);
  parent->addSubview(label);
  NSLayoutConstraint::activateConstraints(
      {label->centerYAnchor().constraintEqualToAnchor(parent->centerYAnchor(), 0),
       label->leadingAnchor().constraintEqualToAnchor(parent->leadingAnchor(), 10),
       label->trailingAnchor().constraintEqualToAnchor(content->trailingAnchor(), -10)});
  parent->layoutIfNeeded();
  const double height = label->intrinsicContentSize().height;
  ASSERT_GT(height, 0);
  EXPECT_EQ(label->frame(), (Rect{10, 50 - height / 2, 60, height}));
}

TEST_F(UIViewLayoutTest, AWidthWithoutASecondViewIsAConstant) {
  const auto view = make<UIView>();
  view->setTranslatesAutoresizingMaskIntoConstraints(false);
  parent->addSubview(view);
  const auto width = view->widthAnchor().constraintEqualToConstant(30);
  NSLayoutConstraint::activateConstraints(
      {width, nullptr, view->heightAnchor().constraintEqualToConstant(40),
       view->centerXAnchor().constraintEqualToAnchor(parent->centerXAnchor()),
       view->bottomAnchor().constraintEqualToAnchor(parent->bottomAnchor())});
  parent->layoutIfNeeded();
  EXPECT_EQ(view->frame(), (Rect{35, 60, 30, 40}));
  width->setConstant(50);
  parent->layoutIfNeeded();
  EXPECT_EQ(view->frame(), (Rect{25, 60, 50, 40}));
}

TEST_F(UIViewLayoutTest, ALabelThatGetsAnotherTextIsPlacedAnew) {
  const auto label = make<UILabel>();
  label->setTranslatesAutoresizingMaskIntoConstraints(false);
  parent->addSubview(label);
  NSLayoutConstraint::activateConstraints(
      {label->topAnchor().constraintEqualToAnchor(parent->topAnchor()),
       label->trailingAnchor().constraintEqualToAnchor(parent->trailingAnchor())});
  label->setText("ab");
  parent->layoutIfNeeded();
  const double narrow = label->frame().width;
  label->setText("abcd");
  parent->layoutIfNeeded();
  EXPECT_GT(label->frame().width, narrow);
  EXPECT_EQ(label->frame().maxX(), 100);
}

TEST_F(UIViewLayoutTest, ConstraintsBetweenStrangersRaise) {
  const auto stranger = make<UIView>();
  const auto constraint = stranger->topAnchor().constraintEqualToAnchor(parent->topAnchor());
  EXPECT_THROW(constraint->setActive(true), Exception);
  EXPECT_FALSE(constraint->isActive());
}

TEST_F(UIViewLayoutTest, AViewThatLeavesTakesItsConstraintsAway) {
  const auto view = addChild({}, 0);
  const auto constraint = view->topAnchor().constraintEqualToAnchor(parent->topAnchor());
  constraint->setActive(true);
  EXPECT_EQ(parent->constraints().size(), 1U);
  view->removeFromSuperview();
  EXPECT_FALSE(constraint->isActive());
  EXPECT_TRUE(parent->constraints().empty());
}

TEST_F(UIViewLayoutTest, LayoutRunsOnlyWhereItIsNeeded) {
  class CountingView : public UIView {
   public:
    void layoutSubviews() override { ++layouts; }
    int layouts = 0;
  };
  const auto view = make<CountingView>();
  parent->addSubview(view);
  parent->layoutIfNeeded();
  parent->layoutIfNeeded();
  EXPECT_EQ(view->layouts, 1);
  view->setFrame({0, 0, 9, 9});
  parent->layoutIfNeeded();
  EXPECT_EQ(view->layouts, 2);
}

}  // namespace
}  // namespace uikit_test
