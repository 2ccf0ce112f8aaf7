#include <atomic>
#include <mutex>

#include "platform/foundation/objects/CurrentQueue.h"
#include "tests/cells/CellsFixture.h"
#include "tests/support/ThreadedTestProcess.h"

namespace zentrova::tests {
namespace {

using platform::Data;
using platform::NSError;
using platform::NSURL;
using platform::NSURLResponse;
using platform::NSURLSession;
using platform::NSURLSessionTaskState;
using platform::UIImage;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;

// Records each failure and the queue that it was reported on.
class NotingLinkCell final : public HBLinkTableCell {
 public:
  struct Failure {
    std::string queue;
    std::shared_ptr<NSURLResponse> response;
    std::shared_ptr<NSError> error;
  };

  void iconLoadDidFailWithResponse(const std::shared_ptr<NSURLResponse>& response,
                                   const std::shared_ptr<NSError>& error) override {
    const std::lock_guard lock(_mutex);
    _failures.push_back({platform::currentQueueLabel(), response, error});
  }
  std::vector<Failure> failures() const {
    const std::lock_guard lock(_mutex);
    return _failures;
  }

 private:
  mutable std::mutex _mutex;
  std::vector<Failure> _failures;
};

std::shared_ptr<NotingLinkCell> makeNoting(const Value& url = iconAddress) {
  return makeCell<NotingLinkCell>(makeRow({{"iconURL", url}}));
}

class IconLoading : public CellsTest {
 protected:
  // Answers the first task and runs everything that follows.
  void answer(const platform::URLAnswer& given) {
    ASSERT_THAT(tasks(), SizeIs(1));
    ASSERT_TRUE(NSURLSession::sharedSession()->answer(1, given));
    process.scheduler().runAllBackground();
    process.scheduler().runMain();
  }
  std::vector<std::string> messages() {
    std::vector<std::string> result;
    for (const auto& entry : process.log().entries()) result.push_back(entry.message);
    return result;
  }
  static std::shared_ptr<NSError> makeError() {
    return NSError::errorWithDomain("NSURLErrorDomain", -1009, "offline");
  }
};

// --- The request ---

TEST_F(IconLoading, MakesTheRequestOnItsSerialQueueAndNeverStartsIt) {
  makeLink({{"iconURL", iconAddress}});
  EXPECT_THAT(NSURLSession::sharedSession()->tasks(), IsEmpty()) << "not on the main thread";
  ASSERT_THAT(tasks(), SizeIs(1));
  process.scheduler().advance(3600);
  const auto task = tasks()[0];
  EXPECT_THAT(task->creationQueue(), EndsWith("common.load-icon-queue"));
  EXPECT_EQ(task->state(), NSURLSessionTaskState::suspended);
  EXPECT_EQ(task->originalRequest()->URL()->absoluteString(), iconAddress);
  EXPECT_EQ(task->originalRequest()->cachePolicy(),
            platform::NSURLRequestCachePolicy::useProtocolCachePolicy);
  EXPECT_EQ(task->originalRequest()->timeoutInterval(), 60);
}

TEST_F(IconLoading, TheRequestNamesTheFrameworkAndTheSystem) {
  process.traits().systemVersion = {16, 5, 1};
  makeLink({{"iconURL", iconAddress}});
  ASSERT_THAT(tasks(), SizeIs(1));
  EXPECT_THAT(tasks()[0]->originalRequest()->allHTTPHeaderFields(),
              ElementsAre(testing::Pair("User-Agent", "Peglol/2.0 iOS/16.5.1")));
}

TEST_F(IconLoading, CellsTakeTheirTurnsInTheOrderInWhichTheyAsked) {
  std::vector<std::shared_ptr<HBLinkTableCell>> cells;
  for (const char* url :
       {"https://example.org/1", "https://example.org/2", "ftp://example.org/3"}) {
    cells.push_back(makeLink({{"iconURL", url}}));
  }
  const auto made = tasks();
  ASSERT_THAT(made, SizeIs(3));
  EXPECT_EQ(made[0]->originalRequest()->URL()->absoluteString(), "https://example.org/1");
  EXPECT_EQ(made[1]->originalRequest()->URL()->absoluteString(), "https://example.org/2");
  EXPECT_EQ(made[2]->originalRequest()->URL()->absoluteString(), "ftp://example.org/3");
  EXPECT_EQ(made[0]->creationQueue(), made[2]->creationQueue());
}

TEST_F(IconLoading, ACellLivesUntilItsRequestWasMade) {
  std::weak_ptr<HBLinkTableCell> cell = makeLink({{"iconURL", iconAddress}});
  EXPECT_FALSE(cell.expired());
  ASSERT_THAT(tasks(), SizeIs(1));
  EXPECT_FALSE(cell.expired()) << "the completion handler holds it now";
  EXPECT_TRUE(NSURLSession::sharedSession()->answer(1, makeAnswer(404)));
  process.scheduler().runAllBackground();
  EXPECT_TRUE(cell.expired());
}

TEST_F(IconLoading, WithoutAnAddressNothingIsAskedFor) {
  makeLink({{"showIcon", true}});
  makeLink({{"iconURL", "not a url"}});
  EXPECT_THAT(tasks(), IsEmpty());
}

TEST_F(IconLoading, WithAnImageNothingIsAskedForAgain) {
  const auto cell = makeLink({{"showIcon", true}});
  cell->setIconURL(NSURL::URLWithString(iconAddress));
  cell->setIconImage(UIImage::systemImageNamed("globe"));
  cell->loadIconIfNeeded();
  EXPECT_THAT(tasks(), IsEmpty());
  cell->setIconImage(nullptr);
  cell->loadIconIfNeeded();
  EXPECT_THAT(tasks(), SizeIs(1));
}

TEST_F(IconLoading, AskingTwiceMakesTwoRequests) {
  const auto cell = makeLink({{"iconURL", iconAddress}});
  cell->loadIconIfNeeded();
  EXPECT_THAT(tasks(), SizeIs(2));
}

TEST_F(IconLoading, TheAddressIsThatOfTheMomentWhenTheRequestIsMade) {
  const auto cell = makeLink({{"iconURL", iconAddress}});
  cell->setIconURL(NSURL::URLWithString("https://example.org/other.png"));
  ASSERT_THAT(tasks(), SizeIs(1));
  EXPECT_EQ(tasks()[0]->originalRequest()->URL()->absoluteString(),
            "https://example.org/other.png");
}

TEST_F(IconLoading, AnAddressOfAnotherKindMakesARequestForNothing) {
  makeNoting(Value(42));
  ASSERT_THAT(tasks(), SizeIs(1));
  EXPECT_FALSE(tasks()[0]->originalRequest()->URL());
  answer(makeAnswer(404));
  ASSERT_THAT(messages(), SizeIs(1));
  EXPECT_THAT(messages()[0], testing::HasSubstr("Error loading icon ((null)): 404 not found"));
}

TEST_F(IconLoading, AnAddressOfAHundredThousandCharactersIsAskedForWhole) {
  const std::string url = "https://example.org/" + std::string(100'000, 'a');
  makeLink({{"iconURL", url}});
  ASSERT_THAT(tasks(), SizeIs(1));
  EXPECT_EQ(tasks()[0]->originalRequest()->URL()->absoluteString(), url);
}

// --- Answers ---

TEST_F(IconLoading, AnImageFadesIn) {
  const auto cell = makeNoting();
  answer(makeAnswer(200, pictureData()));
  ASSERT_TRUE(cell->iconImage());
  EXPECT_EQ(*cell->iconImage()->encodedData(), pictureData());
  EXPECT_EQ(cell->iconImageView()->alpha(), 1);
  ASSERT_TRUE(cell->iconImageView()->lastAnimation());
  EXPECT_EQ(cell->iconImageView()->lastAnimation()->duration, 0.15);
  EXPECT_THAT(cell->failures(), IsEmpty());
  EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(IconLoading, AnImageIsDecodedAndShownOnTheMainQueue) {
  const auto cell = makeNoting();
  ASSERT_THAT(tasks(), SizeIs(1));
  NSURLSession::sharedSession()->answer(1, makeAnswer(200, pictureData()));
  process.scheduler().runAllBackground();
  EXPECT_FALSE(cell->iconImage());
  process.scheduler().runMain();
  EXPECT_TRUE(cell->iconImage());
}

TEST_F(IconLoading, DataThatIsNoImageIsAFailureWithoutALogLine) {
  for (const auto& data :
       {std::optional<Data>(), std::optional(Data("")), std::optional(Data("not an image"))}) {
    const test_support::TestProcess own;
    registerCellClasses(platform::Process::current().classes());
    const auto cell = makeNoting();
    auto& clock = static_cast<platform::VirtualScheduler&>(
        platform::Process::current().service<platform::Scheduler>());
    clock.runAllBackground();
    const auto given = makeAnswer(200, data);
    ASSERT_TRUE(NSURLSession::sharedSession()->answer(1, given));
    clock.runAllBackground();
    EXPECT_THAT(cell->failures(), IsEmpty());
    clock.runMain();
    ASSERT_THAT(cell->failures(), SizeIs(1));
    EXPECT_EQ(cell->failures()[0].queue, "main");
    EXPECT_EQ(cell->failures()[0].response, given.response);
    EXPECT_FALSE(cell->failures()[0].error);
    EXPECT_FALSE(cell->iconImage());
    EXPECT_EQ(cell->iconImageView()->alpha(), 0);
  }
  EXPECT_THAT(messages(), IsEmpty());
}

struct BadAnswer {
  std::optional<std::int64_t> status;
  bool error = false;
  const char* text;  // the end of the log line
};

class FailedLoading : public IconLoading, public testing::WithParamInterface<BadAnswer> {};

TEST_P(FailedLoading, IsLoggedAndToldOnTheCallbackQueue) {
  const auto cell = makeNoting();
  const auto error = GetParam().error ? makeError() : nullptr;
  const auto given = makeAnswer(GetParam().status, pictureData(), error);
  ASSERT_THAT(tasks(), SizeIs(1));
  ASSERT_TRUE(NSURLSession::sharedSession()->answer(1, given));
  process.scheduler().runAllBackground();
  ASSERT_THAT(cell->failures(), SizeIs(1)) << "without the main queue";
  EXPECT_EQ(cell->failures()[0].queue, NSURLSession::callbackQueueLabel);
  EXPECT_EQ(cell->failures()[0].response, given.response);
  EXPECT_EQ(cell->failures()[0].error, error);
  process.scheduler().runMain();
  EXPECT_THAT(cell->failures(), SizeIs(1));
  EXPECT_FALSE(cell->iconImage()) << "the tile stays grey";
  EXPECT_EQ(cell->iconImageView()->alpha(), 0);

  const auto entries = process.log().entries();
  ASSERT_THAT(entries, SizeIs(1));
  EXPECT_EQ(entries[0].source, platform::LogSource::unified);
  EXPECT_EQ(entries[0].level, platform::LogLevel::standard);
  EXPECT_THAT(entries[0].message,
              MatchesRegex("\\[HBLinkTableCell\\.cpp:[0-9]+\\] Error loading icon .*"));
  EXPECT_THAT(entries[0].message,
              EndsWith(std::string("] Error loading icon (https://example.org/icon.png): ") +
                       GetParam().text));
}

constexpr const char* offline =
    "Error Domain=NSURLErrorDomain Code=-1009 \"offline\" "
    "UserInfo={NSLocalizedDescription=offline}";

std::string withError(const char* status) {
  return std::string(status) + " - " + offline;
}
const std::string noResponseAndError = withError("0 unknown status");
const std::string goodAndError = withError("200 no error");
const std::string missingAndError = withError("404 not found");

INSTANTIATE_TEST_SUITE_P(
    Answers, FailedLoading,
    testing::Values(BadAnswer{std::nullopt, false, "0 unknown status - (null)"},
                    BadAnswer{0, false, "0 unknown status - (null)"},
                    BadAnswer{201, false, "201 created - (null)"},
                    BadAnswer{204, false, "204 no content - (null)"},
                    BadAnswer{304, false, "304 not modified - (null)"},
                    BadAnswer{302, false, "302 found - (null)"},
                    BadAnswer{404, false, "404 not found - (null)"},
                    BadAnswer{500, false, "500 internal server error - (null)"},
                    BadAnswer{-1, false, "-1 unknown status - (null)"},
                    BadAnswer{std::nullopt, true, noResponseAndError.c_str()},
                    BadAnswer{200, true, goodAndError.c_str()},
                    BadAnswer{404, true, missingAndError.c_str()}));

TEST_F(IconLoading, NothingIsLoggedWhereTheLevelIsOff) {
  class QuietLog final : public platform::Log {
   public:
    void write(platform::LogEntry /*entry*/) override { ++lines; }
    bool isEnabled(platform::LogLevel /*level*/) const override { return false; }
    int lines = 0;
  };
  const auto log = std::make_shared<QuietLog>();
  process.process().provide<platform::Log>(log);
  const auto cell = makeNoting();
  answer(makeAnswer(404));
  EXPECT_EQ(log->lines, 0);
  EXPECT_THAT(cell->failures(), SizeIs(1)) << "the hook is still called";
}

TEST_F(IconLoading, AResponseWithoutAStatusCountsAsZero) {
  makeNoting();
  platform::URLAnswer given;
  given.response =
      platform::make(&NSURLResponse::initWithURL, NSURL::URLWithString("file:///icon.png"));
  answer(given);
  ASSERT_THAT(messages(), SizeIs(1));
  EXPECT_THAT(messages()[0], EndsWith("): 0 unknown status - (null)"));
}

TEST_F(IconLoading, TheCellItselfLeavesNoMarkOfAFailure) {
  const auto cell = makeLink({{"iconURL", iconAddress}});
  answer(makeAnswer(404, pictureData(), makeError()));
  EXPECT_FALSE(cell->iconImage());
  EXPECT_EQ(cell->iconImageView()->alpha(), 0);
  EXPECT_EQ(cell->detailTextLabel()->text(), "");
}

// --- The image ---

TEST_F(IconLoading, ASecondImageReplacesTheFirstWithoutAFade) {
  const auto cell = makeLink({{"iconURL", iconAddress}});
  cell->setIconImage(UIImage::imageWithData(pictureData()));
  const auto fade = cell->iconImageView()->lastAnimation();
  ASSERT_TRUE(fade);
  const auto second =
      UIImage::imageWithData(Data(std::string_view(test_support::twoPixelPicture())));
  cell->setIconImage(second);
  EXPECT_EQ(cell->iconImage(), second);
  EXPECT_EQ(cell->iconImageView()->alpha(), 1);
  EXPECT_EQ(cell->iconImageView()->lastAnimation(), fade);
}

TEST_F(IconLoading, AnImageViewThatIsHalfVisibleStaysSo) {
  const auto cell = makeLink({{"iconURL", iconAddress}});
  cell->iconImageView()->setAlpha(0.5);
  cell->setIconImage(UIImage::imageWithData(pictureData()));
  EXPECT_EQ(cell->iconImageView()->alpha(), 0.5);
  EXPECT_FALSE(cell->iconImageView()->lastAnimation());
}

TEST_F(IconLoading, WithoutAnImageViewAnImageGoesNowhere) {
  for (const auto& cell : {makeLink(), makeLink({{"initials", "ab"}})}) {
    cell->setIconImage(UIImage::imageWithData(pictureData()));
    EXPECT_FALSE(cell->iconImage());
    EXPECT_FALSE(cell->iconImageView());
  }
}

// --- Real threads ---

TEST(IconLoadingThreads, AnswersReachCellsAndHooksOnTheirThreads) {
  test_support::ThreadedTestProcess process;
  registerCellClasses(process.base().classes());
  const auto session = NSURLSession::sharedSession();
  constexpr std::size_t count = 20;
  std::vector<std::shared_ptr<NotingLinkCell>> cells;
  for (std::size_t i = 0; i < count; ++i) cells.push_back(makeNoting());
  ASSERT_TRUE(process.settles([&] { return session->tasks().size() == count; }));
  for (std::size_t i = 0; i < count; ++i) {
    const bool good = i % 2 == 0;
    // The address may change while the callback queue looks at it for the log.
    if (!good) cells[i]->setIconURL(NSURL::URLWithString("https://example.org/other.png"));
    session->answer(i + 1, makeAnswer(good ? 200 : 404, pictureData()));
    cells[i]->setIconURL(NSURL::URLWithString(iconAddress));
  }
  EXPECT_TRUE(process.settles([&] {
    for (std::size_t i = 0; i < count; ++i) {
      if (i % 2 == 0 ? !cells[i]->iconImage() : cells[i]->failures().empty()) return false;
    }
    return true;
  }));
  for (std::size_t i = 1; i < count; i += 2) {
    EXPECT_EQ(cells[i]->failures().at(0).queue, NSURLSession::callbackQueueLabel);
  }
}

TEST(IconLoadingThreads, CellsMayGoWhileTheirRequestsAreMade) {
  const auto before = platform::Object::liveCount();
  {
    test_support::ThreadedTestProcess process;
    registerCellClasses(process.base().classes());
    for (int i = 0; i < 50; ++i) makeNoting();
    const auto session = NSURLSession::sharedSession();
    ASSERT_TRUE(process.settles([&] { return session->tasks().size() == 50; }));
    for (std::uint64_t task = 1; task <= 50; ++task) session->answer(task, makeAnswer(500));
  }
  EXPECT_EQ(platform::Object::liveCount(), before) << "no reference cycle";
}

}  // namespace
}  // namespace zentrova::tests
