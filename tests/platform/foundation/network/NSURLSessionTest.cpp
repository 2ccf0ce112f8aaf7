#include <atomic>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/foundation/network/NSURLSession.h"
#include "platform/foundation/objects/CurrentQueue.h"
#include "tests/support/TestProcess.h"
#include "tests/support/ThreadedTestProcess.h"

namespace {

using platform::Data;
using platform::make;
using platform::NSError;
using platform::NSHTTPURLResponse;
using platform::NSMutableURLRequest;
using platform::NSURL;
using platform::NSURLSession;
using platform::NSURLSessionTaskState;
using platform::Process;
using platform::Scheduler;
using platform::URLAnswer;
using platform::Value;
using test_support::TestProcess;
using test_support::ThreadedTestProcess;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* address = "https://example.org/icon.png";

std::shared_ptr<NSMutableURLRequest> makeRequest() {
  return NSMutableURLRequest::requestWithURL(NSURL::URLWithString(address));
}

URLAnswer answerWithStatus(std::int64_t status) {
  using Initialiser = bool (NSHTTPURLResponse::*)(std::shared_ptr<NSURL>, std::int64_t);
  return {Data("bytes"),
          make(static_cast<Initialiser>(&NSHTTPURLResponse::initWithURL),
               NSURL::URLWithString(address), status),
          nullptr};
}

class Session : public testing::Test {
 protected:
  TestProcess process;
  std::shared_ptr<NSURLSession> session = NSURLSession::sharedSession();
  std::vector<std::string> ran;

  NSURLSession::Task makeTask() {
    return session->dataTaskWithRequest(
        *makeRequest(), [this](const URLAnswer&) { ran.push_back(platform::currentQueueLabel()); });
  }
};

TEST_F(Session, IsOnePerProcess) {
  EXPECT_EQ(NSURLSession::sharedSession(), session);
  EXPECT_EQ(process.classes().find("NSURLSession")->perform("sharedSession").asObject(), session);
}

TEST_F(Session, ATaskStartsSuspendedAndIsListed) {
  const auto first = makeTask();
  const auto second = makeTask();
  EXPECT_THAT(session->tasks(), ElementsAre(first, second));
  EXPECT_EQ(first->taskIdentifier(), 1U);
  EXPECT_EQ(second->taskIdentifier(), 2U);
  EXPECT_EQ(first->state(), NSURLSessionTaskState::suspended);
  EXPECT_EQ(first->originalRequest()->URL()->absoluteString(), address);
  EXPECT_EQ(first->creationQueue(), "main");
  EXPECT_EQ(first->completionQueue(), std::nullopt);
}

TEST_F(Session, ATaskIsKeptWhenNobodyElseHoldsIt) {
  makeTask();
  ASSERT_THAT(session->tasks(), SizeIs(1));
  process.scheduler().runAllBackground();
  process.scheduler().advance(3600);
  EXPECT_EQ(session->tasks()[0]->state(), NSURLSessionTaskState::suspended);
  EXPECT_THAT(ran, IsEmpty()) << "it was not started";
}

TEST_F(Session, ATaskKeepsTheRequestAsItWas) {
  const auto request = makeRequest();
  request->setValue("1", "X-Try");
  const auto task = session->dataTaskWithRequest(*request, nullptr);
  request->setValue("2", "X-Try");
  EXPECT_EQ(task->originalRequest()->valueForHTTPHeaderField("x-try"), "1");
}

TEST_F(Session, ATaskKnowsTheQueueThatItWasMadeOn) {
  const auto queue = process.scheduler().makeSerialQueue("org.example.loader");
  queue->async([this] { makeTask(); });
  process.scheduler().asyncGlobal([this] { makeTask(); });
  process.scheduler().runAllBackground();
  ASSERT_THAT(session->tasks(), SizeIs(2));
  EXPECT_EQ(session->tasks()[0]->creationQueue(), "org.example.loader");
  EXPECT_EQ(session->tasks()[1]->creationQueue(), "global");
}

TEST_F(Session, AnAnswerIsDeliveredOnTheCallbackQueue) {
  const auto task = makeTask();
  EXPECT_TRUE(session->answer(1, answerWithStatus(200)));
  EXPECT_EQ(task->state(), NSURLSessionTaskState::running);
  process.scheduler().runMain();
  EXPECT_THAT(ran, IsEmpty());
  process.scheduler().runAllBackground();
  EXPECT_THAT(ran, ElementsAre(NSURLSession::callbackQueueLabel));
  EXPECT_EQ(task->state(), NSURLSessionTaskState::completed);
  EXPECT_EQ(task->completionQueue(), NSURLSession::callbackQueueLabel);
}

TEST_F(Session, TheHandlerGetsWhatCameBack) {
  std::optional<URLAnswer> got;
  session->dataTaskWithRequest(*makeRequest(), [&](const URLAnswer& answer) { got = answer; });
  URLAnswer given = answerWithStatus(404);
  given.error = NSError::errorWithDomain("NSURLErrorDomain", -1, "lost");
  session->answer(1, given);
  process.scheduler().runAllBackground();
  ASSERT_TRUE(got);
  EXPECT_EQ(*got->data, Data("bytes"));
  EXPECT_EQ(got->response, given.response);
  EXPECT_EQ(got->error, given.error);
}

TEST_F(Session, ATaskIsAnsweredOnce) {
  makeTask();
  EXPECT_TRUE(session->answer(1, answerWithStatus(200)));
  EXPECT_FALSE(session->answer(1, answerWithStatus(200)));
  process.scheduler().runAllBackground();
  EXPECT_FALSE(session->answer(1, answerWithStatus(200)));
  EXPECT_THAT(ran, SizeIs(1));
}

TEST_F(Session, ThereIsNoAnswerWithoutATask) {
  EXPECT_FALSE(session->answer(0, {}));
  EXPECT_FALSE(session->answer(1, {}));
}

TEST_F(Session, AnAnswerWithoutAHandlerCompletesTheTask) {
  const auto task = session->dataTaskWithRequest(*makeRequest(), nullptr);
  EXPECT_TRUE(session->answer(1, {}));
  process.scheduler().runAllBackground();
  EXPECT_EQ(task->state(), NSURLSessionTaskState::completed);
}

TEST_F(Session, ResumedTasksWaitForTheirAnswer) {
  const auto task = makeTask();
  task->resume();
  EXPECT_EQ(task->state(), NSURLSessionTaskState::running);
  process.scheduler().runAllBackground();
  EXPECT_THAT(ran, IsEmpty());
  task->suspend();
  EXPECT_EQ(task->state(), NSURLSessionTaskState::suspended);
}

TEST_F(Session, ACancelledTaskCompletesWithAnError) {
  std::optional<URLAnswer> got;
  const auto task =
      session->dataTaskWithRequest(*makeRequest(), [&](const URLAnswer& answer) { got = answer; });
  task->cancel();
  EXPECT_EQ(task->state(), NSURLSessionTaskState::canceling);
  EXPECT_FALSE(session->answer(1, answerWithStatus(200)));
  process.scheduler().runAllBackground();
  EXPECT_EQ(task->state(), NSURLSessionTaskState::completed);
  task->resume();
  EXPECT_EQ(task->state(), NSURLSessionTaskState::completed);
  ASSERT_TRUE(got && got->error);
  EXPECT_EQ(got->error->code(), platform::NSURLErrorCancelled);
  EXPECT_FALSE(got->response);
  EXPECT_FALSE(got->data);
}

TEST_F(Session, TheHandlerGoesAfterItHasRun) {
  auto held = std::make_shared<int>(1);
  const std::weak_ptr<int> watched = held;
  session->dataTaskWithRequest(*makeRequest(), [held = std::move(held)](const URLAnswer&) {});
  EXPECT_FALSE(watched.expired());
  session->answer(1, {});
  process.scheduler().runAllBackground();
  EXPECT_TRUE(watched.expired());
}

TEST_F(Session, ATaskIsWorkedByName) {
  makeTask();
  const auto task = session->tasks()[0];
  task->perform("resume");
  EXPECT_EQ(task->valueForKey("state"), Value(0));
  task->perform("suspend");
  EXPECT_EQ(task->valueForKey("state"), Value(1));
  EXPECT_EQ(task->valueForKeyPath("originalRequest.URL.absoluteString"), Value(address));
  task->perform("cancel");
  EXPECT_EQ(task->valueForKey("state"), Value(2));
}

TEST(SessionThreads, AnswersFromManyThreadsReachEachHandlerOnce) {
  ThreadedTestProcess process;
  const auto session = NSURLSession::sharedSession();
  constexpr int count = 50;
  std::atomic<int> handled = 0;
  std::atomic<int> offCallbackQueue = 0;
  for (int i = 0; i < count; ++i) {
    process.scheduler().asyncGlobal([&] {
      const auto task = session->dataTaskWithRequest(*makeRequest(), [&](const URLAnswer&) {
        if (platform::currentQueueLabel() != NSURLSession::callbackQueueLabel) ++offCallbackQueue;
        ++handled;
      });
      const std::uint64_t number = task->taskIdentifier();
      for (int again = 0; again < 2; ++again) {
        Process::current().service<Scheduler>().asyncGlobal(
            [session, number] { session->answer(number, {}); });
      }
    });
  }
  EXPECT_TRUE(process.settles([&] { return handled == count; }));
  EXPECT_EQ(offCallbackQueue, 0);
  EXPECT_THAT(session->tasks(), SizeIs(count));
}

TEST(CurrentQueue, IsKnownOnRealThreads) {
  ThreadedTestProcess process;
  EXPECT_EQ(platform::currentQueueLabel(), "main");
  std::string onSerial;
  std::string onGlobal;
  std::atomic<int> done = 0;
  process.scheduler().makeSerialQueue("org.example.serial")->async([&] {
    onSerial = platform::currentQueueLabel();
    ++done;
  });
  process.scheduler().asyncGlobal([&] {
    onGlobal = platform::currentQueueLabel();
    ++done;
  });
  ASSERT_TRUE(process.settles([&] { return done == 2; }));
  EXPECT_EQ(onSerial, "org.example.serial");
  EXPECT_EQ(onGlobal, "global");
}

TEST(NSMutableURLRequest, StartsWithTheDefaults) {
  const auto request = makeRequest();
  EXPECT_EQ(request->HTTPMethod(), "GET");
  EXPECT_EQ(request->cachePolicy(), platform::NSURLRequestCachePolicy::useProtocolCachePolicy);
  EXPECT_EQ(request->timeoutInterval(), 60);
  EXPECT_THAT(request->allHTTPHeaderFields(), IsEmpty());
}

TEST(NSMutableURLRequest, LetterCaseOfHeaderNamesDoesNotCount) {
  const auto request = makeRequest();
  request->setValue("a", "User-Agent");
  request->setValue("b", "user-agent");
  EXPECT_THAT(request->allHTTPHeaderFields(), SizeIs(1));
  EXPECT_EQ(request->valueForHTTPHeaderField("USER-AGENT"), "b");
  request->setValue(std::nullopt, "uSER-aGENT");
  EXPECT_EQ(request->valueForHTTPHeaderField("User-Agent"), std::nullopt);
}

TEST(NSMutableURLRequest, MayAskForNothing) {
  const auto request = NSMutableURLRequest::requestWithURL(nullptr);
  ASSERT_TRUE(request);
  EXPECT_FALSE(request->URL());
}

TEST(NSHTTPURLResponse, HasThePhraseOfAStatus) {
  const auto phrase = &NSHTTPURLResponse::localizedStringForStatusCode;
  EXPECT_EQ(phrase(200), "no error");
  EXPECT_EQ(phrase(204), "no content");
  EXPECT_EQ(phrase(304), "not modified");
  EXPECT_EQ(phrase(404), "not found");
  EXPECT_EQ(phrase(500), "internal server error");
}

TEST(NSHTTPURLResponse, OtherStatusesHaveThePhraseOfTheirClass) {
  const auto phrase = &NSHTTPURLResponse::localizedStringForStatusCode;
  EXPECT_EQ(phrase(199), "informational");
  EXPECT_EQ(phrase(299), "success");
  EXPECT_EQ(phrase(399), "redirected");
  EXPECT_EQ(phrase(499), "client error");
  EXPECT_EQ(phrase(599), "server error");
  for (const std::int64_t status : {std::int64_t{0}, std::int64_t{-1}, std::int64_t{99},
                                    std::int64_t{600}, INT64_MAX, INT64_MIN}) {
    EXPECT_EQ(phrase(status), "unknown status") << status;
  }
}

TEST(NSError, SaysWhatFailed) {
  const auto error = NSError::errorWithDomain("NSURLErrorDomain", -1001, "The request timed out.");
  EXPECT_EQ(error->description(),
            "Error Domain=NSURLErrorDomain Code=-1001 \"The request timed out.\" "
            "UserInfo={NSLocalizedDescription=The request timed out.}");
}

}  // namespace
