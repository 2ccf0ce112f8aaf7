#include "platform/uikit/tables/UITableViewCell.h"
#include "tests/platform/uikit/UIKitFixture.h"

namespace uikit_test {
namespace {

using namespace platform;
using ::testing::Contains;
using ::testing::Not;

class UITableViewCellTest : public UIKitTest {
 protected:
  static std::shared_ptr<UITableViewCell> makeCell(UITableViewCellStyle style) {
    return make(&UITableViewCell::initWithStyle, style, std::optional<std::string>("id"));
  }
};

TEST_F(UITableViewCellTest, TheStandardStyleHasNoDetailLabel) {
  const auto cell = make<UITableViewCell>();
  EXPECT_EQ(cell->detailTextLabel(), nullptr);
  EXPECT_EQ(cell->reuseIdentifier(), std::nullopt);
  EXPECT_NE(cell->textLabel(), nullptr);
  EXPECT_EQ(cell->subviews().front(), cell->contentView());
}

TEST_F(UITableViewCellTest, TheOtherStylesHaveOne) {
  for (const auto style : {UITableViewCellStyle::value1, UITableViewCellStyle::value2,
                           UITableViewCellStyle::subtitle}) {
    const auto cell = makeCell(style);
    ASSERT_NE(cell->detailTextLabel(), nullptr);
    EXPECT_EQ(cell->style(), style);
    EXPECT_EQ(cell->reuseIdentifier(), "id");
  }
}

// Code that reads the size of a cell outside of a table must not see a height of zero.
TEST_F(UITableViewCellTest, ANewCellHasTheStandardHeight) {
  EXPECT_EQ(make<UITableViewCell>()->frame(), (Rect{0, 0, 320, 44}));
  EXPECT_EQ(makeCell(UITableViewCellStyle::subtitle)->frame(), (Rect{0, 0, 320, 44}));
  EXPECT_EQ(makeWithFrame<UITableViewCell>({0, 0, 100, 60})->frame(), (Rect{0, 0, 100, 60}));
}

TEST_F(UITableViewCellTest, AnAccessoryViewJoinsTheCellAndTheOneBeforeLeaves) {
  const auto cell = make<UITableViewCell>();
  const auto first = make<UIView>();
  const auto second = make<UIView>();
  cell->setAccessoryView(first);
  EXPECT_EQ(first->superview(), cell);
  cell->setAccessoryView(second);
  EXPECT_EQ(first->superview(), nullptr);
  cell->setAccessoryView(nullptr);
  EXPECT_EQ(second->superview(), nullptr);
  EXPECT_EQ(cell->accessoryView(), nullptr);
}

TEST_F(UITableViewCellTest, AnEditingAccessoryCanBeTakenOutByHand) {
  const auto cell = make<UITableViewCell>();
  cell->setEditingAccessoryView(make<UIView>());
  cell->editingAccessoryView()->removeFromSuperview();
  cell->setEditingAccessoryView(nullptr);
  EXPECT_EQ(cell->subviews().size(), 1U);
}

TEST_F(UITableViewCellTest, WhileTheTableIsEditedTheAccessoryOfEditingCounts) {
  const auto cell = makeCell(UITableViewCellStyle::standard);
  const auto endOfContents = [&](bool editing) {
    cell->setEditing(editing);
    cell->layoutIfNeeded();
    return cell->contentView()->frame().maxX();
  };
  const double whole = endOfContents(false);
  cell->setAccessoryType(UITableViewCellAccessoryType::disclosureIndicator);
  EXPECT_LT(endOfContents(false), whole);
  EXPECT_EQ(endOfContents(true), whole);
  cell->setEditingAccessoryType(UITableViewCellAccessoryType::disclosureIndicator);
  EXPECT_LT(endOfContents(true), whole);
}

TEST_F(UITableViewCellTest, PreparingForReuseTakesAwaySelectionAndNothingElse) {
  const auto cell = makeCell(UITableViewCellStyle::value1);
  cell->textLabel()->setText("kept");
  cell->setAccessoryType(UITableViewCellAccessoryType::checkmark);
  cell->setSelected(true);
  cell->prepareForReuse();
  EXPECT_FALSE(cell->isSelected());
  EXPECT_EQ(cell->textLabel()->text(), "kept");
  EXPECT_EQ(cell->accessoryType(), UITableViewCellAccessoryType::checkmark);
}

TEST_F(UITableViewCellTest, AHighlightedCellHighlightsItsTexts) {
  const auto cell = makeCell(UITableViewCellStyle::value1);
  cell->setHighlighted(true);
  EXPECT_TRUE(cell->textLabel()->isHighlighted());
  EXPECT_TRUE(cell->detailTextLabel()->isHighlighted());
  cell->setHighlighted(false);
  cell->setSelectionStyle(UITableViewCellSelectionStyle::none);
  cell->setSelected(true);
  EXPECT_FALSE(cell->textLabel()->isHighlighted()) << "without a selection style";
}

TEST_F(UITableViewCellTest, TheImageStandsBeforeTheTextAndTheAccessoryBehind) {
  const auto cell = makeCell(UITableViewCellStyle::subtitle);
  cell->imageView()->setImage(
      UIImage::imageWithPixels({29, 29, std::vector<std::uint8_t>(4UL * 29 * 29)}, 1));
  cell->textLabel()->setText("Title");
  cell->detailTextLabel()->setText("Subtitle");
  cell->setAccessoryView(makeWithFrame<UIView>({0, 0, 29, 29}));
  cell->setFrame({0, 0, 320, 60});
  cell->layoutIfNeeded();
  EXPECT_EQ(cell->imageView()->frame(), (Rect{16, 15.5, 29, 29}));
  EXPECT_GT(cell->textLabel()->frame().x, cell->imageView()->frame().maxX());
  EXPECT_LE(cell->textLabel()->frame().maxY(), cell->detailTextLabel()->frame().y);
  EXPECT_EQ(cell->accessoryView()->frame(), (Rect{275, 15.5, 29, 29}));
  EXPECT_LE(cell->contentView()->frame().maxX(), 275);
}

TEST_F(UITableViewCellTest, ATextOfManyLinesMakesTheCellHigher) {
  const auto cell = makeCell(UITableViewCellStyle::subtitle);
  cell->textLabel()->setText("Title");
  cell->detailTextLabel()->setText("a subtitle that is too long for one line of a narrow cell");
  const double oneLine = cell->heightThatFitsWidth(200);
  EXPECT_GE(oneLine, UITableViewCell::standardHeight);
  cell->detailTextLabel()->setNumberOfLines(0);
  EXPECT_GT(cell->heightThatFitsWidth(200), oneLine);
}

TEST_F(UITableViewCellTest, ACellHasAChevronToShow) {
  const auto cell = make<UITableViewCell>();
  const auto image = cell->perform("_disclosureChevronImage").as<UIImage>();
  ASSERT_NE(image, nullptr);
  EXPECT_TRUE(image->symbolName().has_value());
}

TEST_F(UITableViewCellTest, TheTintOfATableReachesTheCellsThatAreShown) {
  class TintedCell : public UITableViewCell {
   public:
    void tintColorDidChange() override {
      UITableViewCell::tintColorDidChange();
      textLabel()->setTextColor(tintColor());
    }
  };
  const auto cell = make<TintedCell>();
  const auto table = make<UITableView>();
  table->setTintColor(UIColor::systemPinkColor());
  table->addSubview(cell);
  EXPECT_EQ(cell->textLabel()->textColor()->systemName(), "systemPinkColor");
}

}  // namespace
}  // namespace uikit_test
