#include <cmath>
#include <limits>

#include "platform/uikit/drawing/UIScreen.h"
#include "tests/cells/CellsFixture.h"

namespace zentrova::tests {
namespace {

using platform::CALayer;
using platform::NSURL;
using platform::Rect;
using platform::UIColor;
using platform::UIImage;
using platform::UILabel;
using platform::UITableViewCellSelectionStyle;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::uint32_t flexibleWidthAndHeight = 18;

class LinkCell : public CellsTest {};

// --- Construction ---

TEST_F(LinkCell, AnyStyleGivesTheOneWithASubtitle) {
  for (const auto style : {UITableViewCellStyle::standard, UITableViewCellStyle::value1,
                           UITableViewCellStyle::value2, UITableViewCellStyle::subtitle}) {
    const auto cell = makeCell<HBLinkTableCell>(makeRow(), style);
    EXPECT_EQ(cell->style(), UITableViewCellStyle::subtitle);
    EXPECT_EQ(static_cast<int>(cell->style()), 3);
    EXPECT_TRUE(cell->textLabel() && cell->detailTextLabel());
  }
}

TEST_F(LinkCell, KeepsTheReuseIdentifierAndTheSpecifier) {
  const auto row = makeRow();
  const auto cell = makeCell<HBLinkTableCell>(row);
  EXPECT_EQ(cell->reuseIdentifier(), "identifier");
  EXPECT_EQ(cell->specifier(), row);
  EXPECT_EQ(cell->selectionStyle(), UITableViewCellSelectionStyle::standard);
  EXPECT_EQ(static_cast<int>(cell->selectionStyle()), 3);
}

TEST_F(LinkCell, TheAccessoryIsTheGreySafariSymbol) {
  const auto cell = makeLink();
  const auto accessory = std::dynamic_pointer_cast<platform::UIImageView>(cell->accessoryView());
  ASSERT_TRUE(accessory);
  EXPECT_EQ(accessory->image()->symbolName(), "safari");
  EXPECT_EQ(accessory->tintColor()->systemName(), "systemGray3Color");
}

TEST_F(LinkCell, ARowWithoutASubtitleShowsAnEmptyOne) {
  const auto cell = makeLink();
  EXPECT_EQ(cell->detailTextLabel()->text(), "");
  EXPECT_EQ(cell->detailTextLabel()->textColor()->systemName(), "secondaryLabelColor");
}

TEST_F(LinkCell, ASubtitleTakesOneLineAndABigRowsAsManyAsItNeeds) {
  const auto plain = makeLink({{"subtitle", "below"}});
  EXPECT_EQ(plain->detailTextLabel()->text(), "below");
  EXPECT_EQ(plain->detailTextLabel()->numberOfLines(), 1);
  const auto big = makeLink({{"subtitle", "below"}, {"big", true}});
  EXPECT_EQ(big->detailTextLabel()->numberOfLines(), 0);
}

TEST_F(LinkCell, ALongSubtitleMakesABigRowHigher) {
  std::string text;
  for (int i = 0; i < 40; ++i) text += "many words ";
  const auto plain = makeLink({{"subtitle", text}});
  const auto big = makeLink({{"subtitle", text}, {"big", true}});
  EXPECT_GT(big->heightThatFitsWidth(320), plain->heightThatFitsWidth(320) + 50);
}

TEST_F(LinkCell, IsBigWhereThePropertySaysSo) {
  EXPECT_FALSE(makeLink()->isBig());
  EXPECT_FALSE(makeLink({{"big", false}})->isBig());
  EXPECT_TRUE(makeLink({{"big", true}})->isBig());
  EXPECT_TRUE(makeLink({{"big", 1}})->isBig());
  EXPECT_TRUE(makeLink({{"big", "YES"}})->isBig());
}

TEST_F(LinkCell, IsNeverCircularByItsOwnAccount) {
  EXPECT_FALSE(makeLink()->isIconCircular());
  const auto round = makeLink({{"iconCircular", true}, {"showIcon", true}});
  EXPECT_FALSE(round->isIconCircular());
  EXPECT_EQ(round->valueForKey("isIconCircular"), Value(false));
}

TEST_F(LinkCell, WithoutASpecifierThereIsAPlainRow) {
  const auto cell = makeCell<HBLinkTableCell>(nullptr);
  ASSERT_TRUE(cell);
  EXPECT_EQ(cell->detailTextLabel()->text(), "");
  EXPECT_FALSE(cell->iconView());
}

// --- The address of the icon ---

TEST_F(LinkCell, TextBecomesTheAddressOfTheIcon) {
  const auto url = makeLink({{"iconURL", iconAddress}})->iconURL().as<NSURL>();
  ASSERT_TRUE(url);
  EXPECT_EQ(url->absoluteString(), iconAddress);
}

TEST_F(LinkCell, TextThatDoesNotParseGivesATileAndNoRequest) {
  const auto cell = makeLink({{"iconURL", "not a url"}});
  EXPECT_TRUE(cell->iconURL().isNone());
  ASSERT_TRUE(cell->iconView());
  EXPECT_TRUE(cell->iconImageView());
  EXPECT_THAT(tasks(), IsEmpty());
}

TEST_F(LinkCell, AnAddressIsTakenAsItIs) {
  const auto url = NSURL::URLWithString(iconAddress);
  EXPECT_EQ(makeLink({{"iconURL", Value(url)}})->iconURL().as<NSURL>(), url);
}

TEST_F(LinkCell, AValueOfAnotherKindStaysWhereTheAddressWouldBe) {
  EXPECT_EQ(makeLink({{"iconURL", 42}})->iconURL(), Value(42));
  const platform::Array list{1, 2};
  EXPECT_EQ(makeLink({{"iconURL", list}})->iconURL(), Value(list));
}

// --- Whether there is an icon ---

TEST_F(LinkCell, NoPropertyAsksForAnIcon) {
  const auto row = makeRow({{"big", true}, {"iconCircular", true}, {"iconCornerRadius", 4}});
  const auto cell = makeCell<HBLinkTableCell>(row);
  EXPECT_FALSE(cell->shouldShowIcon());
  EXPECT_FALSE(cell->iconView());
  EXPECT_FALSE(cell->iconImageView());
  EXPECT_TRUE(row->propertyForKey("iconImage").isNone());
  EXPECT_THAT(cell->imageView()->subviews(), IsEmpty());
}

TEST_F(LinkCell, EachOfFourPropertiesAsksForAnIcon) {
  EXPECT_TRUE(makeLink({{"showIcon", true}})->shouldShowIcon());
  EXPECT_TRUE(makeLink({{"showAvatar", true}})->shouldShowIcon());
  EXPECT_TRUE(makeLink({{"iconURL", iconAddress}})->shouldShowIcon());
  EXPECT_TRUE(makeLink({{"iconURL", "not a url"}})->shouldShowIcon());
  EXPECT_TRUE(makeLink({{"iconURL", false}})->shouldShowIcon());
  EXPECT_TRUE(makeLink({{"initials", "ab"}})->shouldShowIcon());
  EXPECT_TRUE(makeLink({{"initials", ""}})->shouldShowIcon());
}

TEST_F(LinkCell, AFalseFlagAsksForNothingAndHidesNothing) {
  EXPECT_FALSE(makeLink({{"showIcon", false}, {"showAvatar", false}})->shouldShowIcon());
  const auto withURL = makeLink({{"showIcon", false}, {"iconURL", iconAddress}});
  EXPECT_TRUE(withURL->shouldShowIcon());
  EXPECT_TRUE(withURL->iconView());
  EXPECT_TRUE(makeLink({{"showAvatar", false}, {"initials", "ab"}})->iconView());
  EXPECT_TRUE(makeLink({{"showIcon", false}, {"showAvatar", true}})->iconView());
}

// --- The tile ---

void expectLevel(const std::shared_ptr<UIColor>& color, double level) {
  ASSERT_TRUE(color);
  const auto components = color->components();
  EXPECT_EQ(components.red, level);
  EXPECT_EQ(components.green, level);
  EXPECT_EQ(components.blue, level);
  EXPECT_EQ(components.alpha, 1);
}

TEST_F(LinkCell, APlaceholderReservesThePlaceOfTheIcon) {
  for (const auto& [big, side] : {std::pair{false, 29.0}, std::pair{true, 40.0}}) {
    const auto row = makeRow({{"showIcon", true}, {"big", big}});
    const auto cell = makeCell<HBLinkTableCell>(row);
    const auto placeholder = row->propertyForKey("iconImage").as<UIImage>();
    ASSERT_TRUE(placeholder);
    EXPECT_EQ(placeholder->size(), (platform::Size{side, side}));
    EXPECT_EQ(placeholder->scale(), 3);
    ASSERT_TRUE(placeholder->pixels());
    EXPECT_THAT(placeholder->pixels()->rgba, testing::Each(0)) << "fully transparent";
    cell->refreshCellContentsWithSpecifier(row);
    EXPECT_EQ(cell->imageView()->image(), placeholder);
  }
}

TEST_F(LinkCell, ThePlaceholderStaysInTheSpecifier) {
  const auto row = makeRow({{"initials", "ab"}});
  makeCell<HBLinkTableCell>(row).reset();
  EXPECT_TRUE(row->propertyForKey("iconImage").as<UIImage>());
}

TEST_F(LinkCell, TheTileLiesOverTheStandardImageViewAndFollowsIt) {
  const auto cell = makeLink({{"showIcon", true}});
  const auto& tile = cell->iconView();
  ASSERT_TRUE(tile);
  EXPECT_EQ(tile->superview(), cell->imageView());
  EXPECT_EQ(tile->autoresizingMask(), flexibleWidthAndHeight);
  expectLevel(tile->backgroundColor(), 0.89999997615814209);
  EXPECT_FALSE(tile->isUserInteractionEnabled());
  EXPECT_TRUE(tile->clipsToBounds());
  cell->refreshCellContentsWithSpecifier(cell->specifier());
  cell->setFrame({0, 0, 320, 44});
  cell->layoutIfNeeded();
  EXPECT_EQ(tile->bounds(), (Rect{0, 0, 29, 29}));
  EXPECT_EQ(cell->iconImageView()->frame(), (Rect{0, 0, 29, 29}));
}

TEST_F(LinkCell, ABigTileFollowsTheImageViewToo) {
  const auto cell = makeLink({{"initials", "ab"}, {"big", true}});
  cell->refreshCellContentsWithSpecifier(cell->specifier());
  cell->setFrame({0, 0, 320, 60});
  cell->layoutIfNeeded();
  EXPECT_EQ(cell->iconView()->bounds(), (Rect{0, 0, 40, 40}));
  EXPECT_EQ(cell->iconView()->subviews().at(0)->frame(), (Rect{0, 0, 40, 40}));
}

TEST_F(LinkCell, InitialsStandInADarkerTile) {
  const auto cell = makeLink({{"initials", "hm"}});
  expectLevel(cell->iconView()->backgroundColor(), 0.69999998807907104);
  ASSERT_THAT(cell->iconView()->subviews(), SizeIs(1));
  const auto label = std::dynamic_pointer_cast<UILabel>(cell->iconView()->subviews()[0]);
  ASSERT_TRUE(label);
  EXPECT_EQ(label->text(), "hm");
  EXPECT_EQ(label->font()->pointSize(), 13);
  EXPECT_EQ(label->font()->weight(), platform::UIFontWeight::regular);
  EXPECT_EQ(label->textAlignment(), platform::NSTextAlignment::center);
  EXPECT_TRUE(platform::sameColor(label->textColor(), UIColor::whiteColor()));
  EXPECT_EQ(label->autoresizingMask(), flexibleWidthAndHeight);
}

TEST_F(LinkCell, InitialsWinOverAnAddressAndNothingIsFetched) {
  const auto cell = makeLink({{"initials", "hm"}, {"iconURL", iconAddress}});
  EXPECT_FALSE(cell->iconImageView());
  EXPECT_TRUE(std::dynamic_pointer_cast<UILabel>(cell->iconView()->subviews().at(0)));
  EXPECT_THAT(tasks(), IsEmpty());
}

TEST_F(LinkCell, AnImageTileWaitsInvisibly) {
  const auto cell = makeLink({{"showAvatar", true}});
  const auto& image = cell->iconImageView();
  ASSERT_TRUE(image);
  EXPECT_EQ(image->superview(), cell->iconView());
  EXPECT_EQ(image->alpha(), 0);
  EXPECT_FALSE(image->image());
  EXPECT_FALSE(image->isUserInteractionEnabled());
  EXPECT_EQ(image->autoresizingMask(), flexibleWidthAndHeight);
  EXPECT_EQ(image->layer()->minificationFilter(), "trilinear");
}

// --- The shape ---

std::shared_ptr<CALayer> shapeOf(Properties properties) {
  properties.emplace_back("showIcon", true);
  return makeLink(properties)->iconView()->layer();
}

TEST_F(LinkCell, ARoundIconHasHalfItsSizeAsRadius) {
  EXPECT_EQ(shapeOf({{"iconCircular", true}})->cornerRadius(), 14.5);
  EXPECT_EQ(shapeOf({{"iconCircular", true}, {"big", true}})->cornerRadius(), 20);
  EXPECT_FALSE(shapeOf({{"iconCircular", true}})->mask());
}

TEST_F(LinkCell, RoundWinsOverAnyRadius) {
  for (const Value& radius : {Value(0), Value(4), Value(-1), Value(std::nan(""))}) {
    const auto shape = shapeOf({{"iconCircular", true}, {"iconCornerRadius", radius}});
    EXPECT_EQ(shape->cornerRadius(), 14.5);
    EXPECT_FALSE(shape->mask());
  }
}

TEST_F(LinkCell, ARadiusThatIsNotNegativeShapesTheTileWithoutAMask) {
  for (const Value& radius : {Value(0), Value(6.5), Value(1000), Value(7.0F), Value("5")}) {
    const auto shape = shapeOf({{"iconCircular", false}, {"iconCornerRadius", radius}});
    EXPECT_EQ(shape->cornerRadius(), radius.doubleValue());
    EXPECT_FALSE(shape->mask()) << radius.description();
  }
  EXPECT_EQ(shapeOf({{"iconCornerRadius", -0.0}})->mask(), nullptr);
}

TEST_F(LinkCell, ARadiusThatIsNoNumberCountsAsNotNegative) {
  const auto shape = shapeOf({{"iconCornerRadius", std::nan("")}});
  EXPECT_TRUE(std::isnan(shape->cornerRadius()));
  EXPECT_FALSE(shape->mask());
}

TEST_F(LinkCell, AnInfiniteRadiusIsTakenByItsSign) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(shapeOf({{"iconCornerRadius", infinity}})->cornerRadius(), infinity);
  EXPECT_TRUE(shapeOf({{"iconCornerRadius", -infinity}})->mask());
}

TEST_F(LinkCell, ANegativeRadiusOrNoneGivesTheShapeOfAnApplicationIcon) {
  for (const auto& properties : {Properties{{"iconCornerRadius", -1}},
                                 Properties{{"iconCornerRadius", -0.001}}, Properties{}}) {
    const auto shape = shapeOf(properties);
    ASSERT_TRUE(shape->mask());
    EXPECT_EQ(shape->cornerRadius(), 0);
    EXPECT_EQ(shape->mask()->frame(), (Rect{0, 0, 29, 29}));
    ASSERT_TRUE(shape->mask()->contents());
    EXPECT_EQ(shape->mask()->contents()->size(), (platform::Size{29, 29}));
  }
}

TEST_F(LinkCell, ABigIconHasTheLargeMask) {
  const auto shape = shapeOf({{"big", true}});
  EXPECT_EQ(shape->mask()->frame(), (Rect{0, 0, 40, 40}));
  EXPECT_EQ(shape->mask()->contents()->size(), (platform::Size{40, 40}));
}

TEST_F(LinkCell, AMaskIsMadeOnceForEachSizeAndShared) {
  const auto first = shapeOf({});
  const auto second = shapeOf({});
  const auto big = shapeOf({{"big", true}});
  EXPECT_NE(first->mask(), second->mask()) << "each tile has a layer of its own";
  EXPECT_EQ(first->mask()->contents(), second->mask()->contents());
  EXPECT_NE(first->mask()->contents(), big->mask()->contents());
  EXPECT_EQ(big->mask()->contents(), shapeOf({{"big", true}})->mask()->contents());
}

TEST_F(LinkCell, EachProcessHasItsOwnMasks) {
  const auto mask = shapeOf({})->mask()->contents();
  const test_support::TestProcess other;
  registerCellClasses(platform::Process::current().classes());
  EXPECT_NE(shapeOf({})->mask()->contents(), mask);
}

TEST_F(LinkCell, InitialsAreShapedLikeImages) {
  EXPECT_TRUE(makeLink({{"initials", "a"}})->iconView()->layer()->mask());
  const auto round = makeLink({{"initials", "a"}, {"iconCircular", true}});
  EXPECT_EQ(round->iconView()->layer()->cornerRadius(), 14.5);
}

// --- Values of the wrong type ---

std::vector<Value> oddValues() {
  return {Value(platform::Array{1}),
          Value(platform::Dictionary{{"a", 1}}),
          Value(platform::Data("x")),
          Value(platform::Date{1}),
          Value(std::make_shared<platform::Object>()),
          Value("some text"),
          Value(""),
          Value(std::string(100'000, 'x')),
          Value(-7),
          Value(std::nan("")),
          Value(true)};
}

TEST_F(LinkCell, NoValueOfAnyKindBreaksARow) {
  for (const char* key : {"big", "iconURL", "subtitle", "initials", "iconCircular",
                          "iconCornerRadius", "showIcon", "showAvatar", "iconImage", "url"}) {
    for (const Value& value : oddValues()) {
      const auto row = makeRow({{"showIcon", true}, {"showAvatar", true}, {key, value}});
      const auto cell = makeCell<HBLinkTableCell>(row);
      ASSERT_TRUE(cell) << key;
      cell->refreshCellContentsWithSpecifier(row);
      EXPECT_TRUE(cell->iconView()) << key;
      EXPECT_EQ(cell->textLabel()->text(), "Title");
    }
  }
  process.scheduler().runAllBackground();
}

TEST_F(LinkCell, AValueOfAnotherKindCountsAsAbsent) {
  const platform::Array list{1};
  const auto cell = makeLink({{"big", list},
                              {"subtitle", 5},
                              {"iconCircular", list},
                              {"iconCornerRadius", list},
                              {"showIcon", true}});
  EXPECT_FALSE(cell->isBig());
  EXPECT_EQ(cell->detailTextLabel()->text(), "");
  EXPECT_TRUE(cell->iconView()->layer()->mask());
  EXPECT_FALSE(makeLink({{"showIcon", list}, {"showAvatar", list}})->iconView());
}

TEST_F(LinkCell, InitialsOfAnotherKindGiveATileWithoutLetters) {
  const auto cell = makeLink({{"initials", 42}});
  const auto label = std::dynamic_pointer_cast<UILabel>(cell->iconView()->subviews().at(0));
  ASSERT_TRUE(label);
  EXPECT_EQ(label->text(), std::nullopt);
}

// --- By name ---

TEST_F(LinkCell, IsMadeAndReadByName) {
  const auto* found = process.classes().find("HBLinkTableCell");
  ASSERT_TRUE(found);
  EXPECT_TRUE(found->isSubclassOf("HBTintedTableCell"));
  EXPECT_TRUE(found->isSubclassOf("PSTableCell"));
  const auto cell = found->allocate();
  const auto row = makeRow({{"iconURL", iconAddress}, {"big", true}});
  EXPECT_EQ(cell->perform("initWithStyle:reuseIdentifier:specifier:", {0, "id", Value(row)}),
            Value(true));
  EXPECT_EQ(cell->perform("shouldShowIcon"), Value(true));
  EXPECT_EQ(cell->perform("isBig"), Value(true));
  EXPECT_EQ(cell->valueForKeyPath("iconURL.absoluteString"), Value(iconAddress));
  EXPECT_EQ(cell->valueForKeyPath("iconView.layer.cornerRadius"), Value(0.0));
  EXPECT_EQ(cell->valueForKeyPath("iconImageView.alpha"), Value(0.0));
  EXPECT_TRUE(cell->valueForKey("iconImage").isNone());
  cell->perform("setIconImage:", {Value(UIImage::systemImageNamed("globe"))});
  EXPECT_EQ(cell->perform("iconImage").as<UIImage>()->symbolName(), "globe");
  cell->perform("setIconURL:", {nullptr});
  EXPECT_TRUE(cell->perform("iconURL").isNone());
  cell->perform("iconLoadDidFailWithResponse:error:", {nullptr, nullptr});
  cell->perform("loadIconIfNeeded");
}

}  // namespace
}  // namespace zentrova::tests
