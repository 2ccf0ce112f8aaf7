#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "platform/foundation/log/LogFormat.h"
#include "platform/foundation/network/NSURL.h"
#include "platform/foundation/objects/NSAssertionHandler.h"
#include "platform/foundation/values/Exception.h"
#include "tests/support/TestProcess.h"

namespace {

using platform::AssertingMethod;
using platform::Exception;
using platform::NSAssertionHandler;
using platform::Value;
using test_support::TestProcess;
using testing::ElementsAre;

// Records the failure and lets the operation continue.
class NotingHandler final : public NSAssertionHandler {
 public:
  std::vector<std::string> failures;

  void handleFailureInMethod(const AssertingMethod& method, std::string_view fileName,
                             std::int64_t lineNumber, std::string_view descriptionFormat,
                             std::initializer_list<Value> arguments) override {
    failures.push_back(method.text() + " " + std::string(fileName) + " " +
                       std::to_string(lineNumber) + " " +
                       platform::formatString(descriptionFormat, arguments));
  }
};

TEST(NSAssertionHandler, TheStandardOneLogsAndRaises) {
  TestProcess process;
  const auto method = AssertingMethod::ofClass("check:", *process.classes().find("NSURL"));
  try {
    NSAssertionHandler::currentHandler()->handleFailureInMethod(
        method, "Here.cpp", 12, "Invalid parameter not satisfying: %@", {"a != nil"});
    FAIL() << "nothing was raised";
  } catch (const Exception& exception) {
    EXPECT_EQ(exception.name(), "NSInternalInconsistencyException");
    EXPECT_EQ(exception.reason(), "Invalid parameter not satisfying: a != nil");
  }
  EXPECT_TRUE(process.log().contains("*** Assertion failure in +[NSURL check:], Here.cpp:12"));
}

TEST(NSAssertionHandler, NamesTheOperationOfAnObject) {
  TestProcess process;
  const platform::NSURL url;
  EXPECT_EQ(AssertingMethod::ofObject("path", url).text(), "-[NSURL path]");
}

TEST(NSAssertionHandler, IsOnePerProcessAndCanBeReplaced) {
  TestProcess process;
  EXPECT_EQ(NSAssertionHandler::currentHandler(), NSAssertionHandler::currentHandler());
  const auto handler = std::make_shared<NotingHandler>();
  process.process().provide<NSAssertionHandler>(handler);
  EXPECT_EQ(process.classes().find("NSAssertionHandler")->perform("currentHandler").asObject(),
            handler);
  NSAssertionHandler::currentHandler()->handleFailureInMethod(
      AssertingMethod::ofClass("a:b:", *process.classes().find("NSURL")), "X.cpp", 3, "%i left",
      {2});
  EXPECT_THAT(handler->failures, ElementsAre("+[NSURL a:b:] X.cpp 3 2 left"));
}

}  // namespace
