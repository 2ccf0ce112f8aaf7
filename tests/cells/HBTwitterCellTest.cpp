#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/objects/NSAssertionHandler.h"
#include "platform/foundation/values/Exception.h"
#include "platform/preferences/PSListController.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "tests/cells/CellsFixture.h"

namespace zentrova::tests {
namespace {

using platform::AssertingMethod;
using platform::Exception;
using platform::NSAssertionHandler;
using platform::NSURL;
using testing::MatchesRegex;
using testing::SizeIs;

std::string addressOf(const std::optional<std::string>& user,
                      const std::optional<std::string>& userID) {
  const auto url = HBTwitterCell::_urlForUsername(user, userID);
  return url ? url->absoluteString() : "nothing";
}

std::string urlOf(const std::shared_ptr<PSSpecifier>& row) {
  const auto url = row->propertyForKey("url").as<NSURL>();
  return url ? url->absoluteString() : "nothing";
}

class TwitterCell : public CellsTest {
 protected:
  static std::shared_ptr<HBTwitterCell> make(const std::shared_ptr<PSSpecifier>& row) {
    return makeCell<HBTwitterCell>(row);
  }
  // The name and the reason of the exception that making the row raises.
  static std::string raisedBy(const std::shared_ptr<PSSpecifier>& row) {
    try {
      make(row);
    } catch (const Exception& exception) {
      return exception.what();
    }
    return "nothing";
  }
};

// --- Addresses ---

TEST_F(TwitterCell, AUserNameStandsInTheRootPath) {
  EXPECT_EQ(addressOf("hollowmere", std::nullopt), "https://twitter.com/hollowmere");
  EXPECT_EQ(addressOf("", std::nullopt), "https://twitter.com/");
}

TEST_F(TwitterCell, TheNameWinsOverTheID) {
  EXPECT_EQ(addressOf("hollowmere", "42"), "https://twitter.com/hollowmere");
}

TEST_F(TwitterCell, AnIDAloneIsAskedForByTheIntentPath) {
  EXPECT_EQ(addressOf(std::nullopt, "42"), "https://twitter.com/intent/user?user_id=42");
  EXPECT_EQ(addressOf(std::nullopt, ""), "https://twitter.com/intent/user?user_id=");
}

TEST_F(TwitterCell, ANameIsPercentEncodedAsAPath) {
  EXPECT_EQ(addressOf("two words", std::nullopt), "https://twitter.com/two%20words");
  EXPECT_EQ(addressOf("a/b@c:d", std::nullopt), "https://twitter.com/a/b@c:d");
  EXPECT_EQ(addressOf("a?b#c;d%e", std::nullopt), "https://twitter.com/a%3Fb%23c%3Bd%25e");
  EXPECT_EQ(addressOf("grün", std::nullopt), "https://twitter.com/gr%C3%BCn");
  EXPECT_EQ(addressOf("[x]", std::nullopt), "https://twitter.com/%5Bx%5D");
}

TEST_F(TwitterCell, AnIDIsEncodedAsAQueryItem) {
  EXPECT_EQ(addressOf(std::nullopt, "4 2&x=1#y"),
            "https://twitter.com/intent/user?user_id=4%202%26x%3D1%23y");
  EXPECT_EQ(addressOf(std::nullopt, "a/b?c"), "https://twitter.com/intent/user?user_id=a/b?c");
}

TEST_F(TwitterCell, ANameOfAHundredThousandCharactersHasAnAddress) {
  const std::string name(100'000, ' ');
  EXPECT_EQ(addressOf(name, std::nullopt).size(), 20U + 300'000U);
}

TEST_F(TwitterCell, ANameWithoutAUtf8FormIsAnInvalidArgument) {
  EXPECT_EQ(raisedBy(makeRow({{"user", "\xED\xA0\x80"}})),
            "NSInvalidArgumentException: -[__NSCFString stringByAppendingString:]: nil argument");
}

// --- The assertion ---

TEST_F(TwitterCell, WithoutNameAndIDTheAssertionFails) {
  const auto row = makeRow();
  EXPECT_EQ(raisedBy(row),
            "NSInternalInconsistencyException: Invalid parameter not satisfying: "
            "username != nil || userID != nil");
  const auto entries = process.log().entries();
  ASSERT_THAT(entries, SizeIs(1));
  EXPECT_THAT(entries[0].message,
              MatchesRegex("\\*\\*\\* Assertion failure in \\+\\[HBTwitterCell "
                           "_urlForUsername:userID:\\], HBTwitterCell\\.cpp:[0-9]+"));
  EXPECT_EQ(row->propertyForKey("iconCircular"), Value(true)) << "set before the exception";
  EXPECT_TRUE(row->propertyForKey("url").isNone());
}

TEST_F(TwitterCell, AHandlerThatReturnsLetsTheOperationGoOn) {
  class Lenient final : public NSAssertionHandler {
   public:
    int failures = 0;
    void handleFailureInMethod(const AssertingMethod& method, std::string_view fileName,
                               std::int64_t lineNumber, std::string_view format,
                               std::initializer_list<Value> arguments) override {
      ++failures;
      EXPECT_EQ(method.text(), "+[HBTwitterCell _urlForUsername:userID:]");
      EXPECT_EQ(fileName, "HBTwitterCell.cpp");
      EXPECT_GT(lineNumber, 0);
      EXPECT_EQ(format, "Invalid parameter not satisfying: %@");
      ASSERT_THAT(arguments, SizeIs(1));
      EXPECT_EQ(*arguments.begin(), Value("username != nil || userID != nil"));
    }
  };
  const auto handler = std::make_shared<Lenient>();
  process.process().provide<NSAssertionHandler>(handler);
  EXPECT_EQ(addressOf(std::nullopt, std::nullopt), "https://twitter.com/intent/user?user_id");
  EXPECT_EQ(handler->failures, 1);
}

TEST_F(TwitterCell, ValuesThatAreNoTextsCountAsAbsent) {
  EXPECT_THAT(raisedBy(makeRow({{"user", 5}, {"userID", platform::Array{1}}})),
              testing::StartsWith("NSInternalInconsistencyException"));
  const auto row = makeRow({{"user", "hollowmere"}, {"userID", 5}});
  EXPECT_TRUE(make(row));
  EXPECT_THAT(raisedBy(nullptr), testing::StartsWith("NSInternalInconsistencyException"));
}

// --- The cell ---

TEST_F(TwitterCell, WritesTheAddressAndShowsTheName) {
  const auto row = makeRow({{"user", "hollowmere"}});
  const auto cell = make(row);
  ASSERT_TRUE(cell);
  EXPECT_EQ(urlOf(row), "https://twitter.com/hollowmere");
  EXPECT_EQ(cell->detailTextLabel()->text(), "@hollowmere");
  EXPECT_EQ(cell->style(), UITableViewCellStyle::subtitle);
}

TEST_F(TwitterCell, ANameWithABlankIsEncodedInTheAddressAlone) {
  const auto row = makeRow({{"user", "two words"}});
  const auto cell = make(row);
  EXPECT_EQ(urlOf(row), "https://twitter.com/two%20words");
  EXPECT_EQ(cell->detailTextLabel()->text(), "@two words");
}

TEST_F(TwitterCell, WithNameAndIDTheIDIsIgnored) {
  const auto row = makeRow({{"user", "hollowmere"}, {"userID", "42"}});
  EXPECT_EQ(make(row)->detailTextLabel()->text(), "@hollowmere");
  EXPECT_EQ(urlOf(row), "https://twitter.com/hollowmere");
}

TEST_F(TwitterCell, AnySubtitleIsReplaced) {
  const auto cell = make(makeRow({{"user", "hollowmere"}, {"subtitle", "something else"}}));
  EXPECT_EQ(cell->detailTextLabel()->text(), "@hollowmere");
  cell->refreshCellContentsWithSpecifier(cell->specifier());
  EXPECT_EQ(cell->detailTextLabel()->text(), "@hollowmere") << "and is kept";
}

TEST_F(TwitterCell, ARowWithAnIDAloneCannotBeShown) {
  const auto row = makeRow({{"userID", "42"}});
  EXPECT_EQ(raisedBy(row),
            "NSInvalidArgumentException: -[__NSCFString stringByAppendingString:]: nil argument");
  EXPECT_EQ(urlOf(row), "https://twitter.com/intent/user?user_id=42") << "set before the exception";
}

TEST_F(TwitterCell, AvatarsAreRoundUnlessTheRowSaysOtherwise) {
  const auto silent = makeRow({{"user", "a"}, {"showAvatar", true}});
  EXPECT_EQ(make(silent)->iconView()->layer()->cornerRadius(), 14.5);
  EXPECT_EQ(silent->propertyForKey("iconCircular"), Value(true));

  const auto square = makeRow({{"user", "a"}, {"showAvatar", true}, {"iconCircular", false}});
  const auto cell = make(square);
  EXPECT_EQ(square->propertyForKey("iconCircular"), Value(false));
  EXPECT_EQ(cell->iconView()->layer()->cornerRadius(), 0);
  EXPECT_TRUE(cell->iconView()->layer()->mask());
}

TEST_F(TwitterCell, WhatItWritesStaysForTheNextCellOfTheRow) {
  const auto row = makeRow({{"user", "a"}, {"showAvatar", true}});
  make(row).reset();
  EXPECT_EQ(urlOf(row), "https://twitter.com/a");
  row->setProperty(false, "iconCircular");
  EXPECT_TRUE(make(row)->iconView()->layer()->mask()) << "an existing value is kept";
}

TEST_F(TwitterCell, AnAddressThatTheRowHasIsReplaced) {
  const auto row = makeRow({{"user", "a"}, {"url", "https://example.org/"}});
  make(row);
  EXPECT_EQ(urlOf(row), "https://twitter.com/a");
}

// A cell of another network.
class OtherNetworkCell final : public HBTwitterCell {
  PLATFORM_CLASS(OtherNetworkCell)
 public:
  static std::shared_ptr<NSURL> urlForUsername(const std::optional<std::string>& user,
                                               const std::optional<std::string>& /*userID*/) {
    return NSURL::URLWithString("https://other.example/" + user.value_or("nobody"));
  }
};

TEST_F(TwitterCell, ASubclassMayGiveItsOwnAddresses) {
  process.classes().add(
      platform::ClassBuilder<OtherNetworkCell>("HBTwitterCell")
          .classOperation("_urlForUsername:userID:", &OtherNetworkCell::urlForUsername)
          .build());
  const auto row = makeRow({{"user", "me"}});
  const auto cell = process.classes().find("OtherNetworkCell")->allocateAs<HBTwitterCell>();
  ASSERT_TRUE(cell->initWithStyle(UITableViewCellStyle::subtitle, "id", row));
  EXPECT_EQ(urlOf(row), "https://other.example/me");
}

TEST_F(TwitterCell, GivesAddressesByName) {
  const auto* found = process.classes().find("HBTwitterCell");
  ASSERT_TRUE(found);
  EXPECT_TRUE(found->isSubclassOf("HBLinkTableCell"));
  const auto url = found->perform("_urlForUsername:userID:", {nullptr, "7"}).as<NSURL>();
  ASSERT_TRUE(url);
  EXPECT_EQ(url->absoluteString(), "https://twitter.com/intent/user?user_id=7");
}

TEST_F(TwitterCell, ARowThatCannotBeShownDoesNotTakeTheOthersWithIt) {
  const auto page = platform::make<platform::PSListController>();
  const auto bad = makeRow({{"userID", "42"}, {"cellClass", "HBTwitterCell"}});
  const auto good = makeRow({{"user", "hollowmere"}, {"cellClass", "HBTwitterCell"}});
  page->setSpecifiers(platform::makeSpecifiers({bad, good}));
  const auto window = platform::make<platform::UIWindow>();
  window->setRootViewController(page);
  window->makeKeyAndVisible();
  EXPECT_THROW(window->layoutIfNeeded(), Exception);
  window->layoutIfNeeded();
  const auto shown = page->cachedCellForSpecifier(good);
  ASSERT_TRUE(shown);
  EXPECT_EQ(shown->detailTextLabel()->text(), "@hollowmere");
  EXPECT_FALSE(page->cachedCellForSpecifier(bad));
}

}  // namespace
}  // namespace zentrova::tests
