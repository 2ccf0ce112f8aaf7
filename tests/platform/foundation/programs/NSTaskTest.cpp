#include <cerrno>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "platform/foundation/objects/NSNotificationCenter.h"
#include "platform/foundation/programs/NSTask.h"
#include "platform/foundation/values/Collections.h"
#include "platform/foundation/values/Exception.h"
#include "tests/support/TestProcess.h"

namespace {

using platform::Exception;
using platform::make;
using platform::NSFileHandle;
using platform::NSNotification;
using platform::NSNotificationCenter;
using platform::NSPipe;
using platform::NSTask;
using platform::Object;
using platform::Value;
using test_support::TestProcess;
using testing::ElementsAre;
using testing::IsEmpty;

std::string textOf(const Value& data) {
  if (data.asData() == nullptr) return "no data";
  const auto bytes = data.asData()->bytes();
  return {bytes.begin(), bytes.end()};
}

// Collects the chunks that a reading end reports, while it exists.
class ChunkObserver {
 public:
  explicit ChunkObserver(const std::shared_ptr<NSFileHandle>& handle)
      : _token(NSNotificationCenter::defaultCenter().addObserverForName(
            std::string(platform::NSFileHandleDataAvailableNotification), handle,
            [this](const NSNotification& notification) {
              const auto from = std::dynamic_pointer_cast<NSFileHandle>(notification.object);
              chunks.push_back(textOf(from->availableData()));
            })) {
    handle->waitForDataInBackgroundAndNotify();
  }
  ~ChunkObserver() { NSNotificationCenter::defaultCenter().removeObserver(_token); }
  ChunkObserver(const ChunkObserver&) = delete;
  ChunkObserver& operator=(const ChunkObserver&) = delete;

  std::vector<std::string> chunks;

 private:
  std::shared_ptr<Object> _token;
};

std::string exceptionOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const Exception& exception) {
    return exception.name() + ": " + exception.reason();
  }
  return "nothing was raised";
}

class NSTaskTest : public testing::Test {
 protected:
  // Runs a program of the tree with a pipe as output, and returns the reported chunks.
  std::vector<std::string> run(const std::string& path) {
    const auto pipe = make<NSPipe>();
    _task->setLaunchPath(path);
    _task->setStandardOutput(pipe);
    const ChunkObserver observer(pipe->fileHandleForReading());
    _task->launch();
    _task->waitUntilExit();
    return observer.chunks;
  }

  TestProcess _test{TestProcess::RunPrograms::real};
  std::shared_ptr<NSTask> _task = make<NSTask>();
};

TEST_F(NSTaskTest, TheOutputIsToldWhileTheTaskIsWaitedFor) {
  _test.tree().writeProgram("/bin/bash", "printf 'Package: x\\nVersion: 1.0\\n'; exit 4");
  EXPECT_THAT(run("/bin/bash"), ElementsAre("Package: x\nVersion: 1.0\n"));
  EXPECT_FALSE(_task->isRunning());
  EXPECT_EQ(_task->terminationStatus(), 4);
}

TEST_F(NSTaskTest, TheProgramGetsItsPathAndTheArgumentsAsTheyAre) {
  _test.tree().writeProgram("/bin/bash", "echo \"$#:$1:$2:$3\"");
  _task->setArguments({"dpkg", "-s", "com.hollowmere.zentrova"});
  EXPECT_THAT(run("/bin/bash"), ElementsAre("3:dpkg:-s:com.hollowmere.zentrova\n"));
  EXPECT_THAT(_test.programs().records().at(0).request.arguments,
              ElementsAre("/bin/bash", "dpkg", "-s", "com.hollowmere.zentrova"));
}

TEST_F(NSTaskTest, AProgramWithoutOutputIsToldAsAnEmptyChunk) {
  _test.tree().writeProgram("/bin/bash", "exit 1");
  EXPECT_THAT(run("/bin/bash"), ElementsAre(""));
}

TEST_F(NSTaskTest, AMissingProgramEndsAtOnceWithoutOutput) {
  EXPECT_THAT(run("/bin/bash"), ElementsAre(""));
  EXPECT_EQ(_task->terminationStatus(), 127);
  EXPECT_EQ(_task->processIdentifier(), 0);
}

TEST_F(NSTaskTest, OnlyOneChunkIsToldUntilTheWaitIsRenewed) {
  _test.tree().writeProgram("/big", "head -c 60000 /dev/zero; echo end");
  const std::vector<std::string> chunks = run("/big");
  ASSERT_EQ(chunks.size(), 1U);
  EXPECT_LE(chunks[0].size(), 65536U);
  EXPECT_GT(chunks[0].size(), 0U);
}

TEST_F(NSTaskTest, WhatArrivesAfterTheObserverIsGoneIsIgnored) {
  const auto pipe = make<NSPipe>();
  {
    const ChunkObserver observer(pipe->fileHandleForReading());
    EXPECT_THAT(observer.chunks, IsEmpty());
  }
  ASSERT_EQ(::write(pipe->fileHandleForWriting()->fileDescriptor(), "x", 1), 1);
  EXPECT_NO_THROW(_test.scheduler().runMain());
  EXPECT_EQ(textOf(pipe->fileHandleForReading()->availableData()), "x") << "it has not been read";
}

TEST_F(NSTaskTest, MainWorkGoesOnWhileTheTaskIsWaitedFor) {
  _test.tree().writeProgram("/wait", "while [ ! -e \"$1\" ]; do /bin/sleep 0.01; done");
  const std::string flag = _test.tree().rawHostPath("/flag");
  _task->setLaunchPath("/wait");
  _task->setArguments({flag});
  bool ran = false;
  _test.scheduler().asyncMain([&] {
    _test.tree().write("/flag", "");
    ran = true;
  });
  _task->launch();
  _task->waitUntilExit();
  EXPECT_TRUE(ran);
}

TEST_F(NSTaskTest, WaitingTakesNoTurnBeforeTheProgramEnds) {
  _test.tree().writeProgram("/wait", "exec /bin/sleep 0.2");
  _task->setLaunchPath("/wait");
  int turns = 0;
  _test.scheduler().setWaitHandler([&](double) {
    ++turns;
    return 1000.0;
  });
  _task->launch();
  _task->waitUntilExit();
  EXPECT_FALSE(_task->isRunning());
  EXPECT_LE(turns, 3);
}

TEST_F(NSTaskTest, ATaskWithoutALaunchPathRaises) {
  EXPECT_EQ(exceptionOf([&] { _task->launch(); }),
            "NSInvalidArgumentException: *** -[NSConcreteTask launch]: launch path not "
            "accessible");
}

TEST_F(NSTaskTest, ATaskRunsOnce) {
  run("/none");
  EXPECT_EQ(exceptionOf([&] { _task->launch(); }),
            "NSInvalidArgumentException: *** -[NSConcreteTask launch]: task already launched");
}

TEST_F(NSTaskTest, TheStatusIsKnownOnlyAtTheEnd) {
  EXPECT_EQ(exceptionOf([&] { _task->terminationStatus(); }),
            "NSInvalidArgumentException: *** -[NSConcreteTask terminationStatus]: task not "
            "launched");
  _test.tree().writeProgram("/wait", "exec /bin/sleep 1000");
  _task->setLaunchPath("/wait");
  _task->launch();
  EXPECT_TRUE(_task->isRunning());
  EXPECT_GT(_task->processIdentifier(), 0);
  EXPECT_EQ(exceptionOf([&] { _task->terminationStatus(); }),
            "NSInvalidArgumentException: *** -[NSConcreteTask terminationStatus]: task still "
            "running");
  _task->terminate();
  _task->waitUntilExit();
  EXPECT_EQ(_task->terminationStatus(), 128 + 15);
}

TEST_F(NSTaskTest, WaitingForATaskThatWasNotLaunchedReturnsAtOnce) {
  EXPECT_NO_THROW(_task->waitUntilExit());
  EXPECT_FALSE(_task->isRunning());
}

TEST_F(NSTaskTest, TheProgramFindsTheEnvironmentOfADevice) {
  _test.tree().writeProgram("/bin/bash", "echo \"$HOME\"");
  EXPECT_THAT(run("/bin/bash"), ElementsAre("/var/mobile\n"));
}

TEST(NSTaskWithRecordedPrograms, GivesTheAnswerOfTheStandIn) {
  TestProcess test;
  test.recordedPrograms().answer("/bin/bash", "Version: 2.1\n");
  const auto pipe = make<NSPipe>();
  const auto task = make<NSTask>();
  task->setLaunchPath("/bin/bash");
  task->setStandardOutput(pipe);
  const ChunkObserver observer(pipe->fileHandleForReading());
  task->launch();
  task->waitUntilExit();
  EXPECT_THAT(observer.chunks, ElementsAre("Version: 2.1\n"));
}

class NSFileHandleTest : public testing::Test {
 protected:
  TestProcess _test;
  std::shared_ptr<NSPipe> _pipe = make<NSPipe>();
};

TEST_F(NSFileHandleTest, AHandleWithoutADescriptorIsRefused) {
  EXPECT_FALSE(make(&NSFileHandle::initWithFileDescriptor, -1));
}

TEST_F(NSFileHandleTest, AvailableDataIsEmptyAtTheEnd) {
  _pipe->fileHandleForWriting()->closeFile();
  EXPECT_EQ(textOf(_pipe->fileHandleForReading()->availableData()), "");
}

TEST_F(NSFileHandleTest, WhatCannotBeReadGivesNoData) {
  EXPECT_TRUE(_pipe->fileHandleForWriting()->availableData().isNone());
}

TEST_F(NSFileHandleTest, AClosedHandleRaises) {
  const auto handle = _pipe->fileHandleForReading();
  handle->closeFile();
  handle->closeFile();
  EXPECT_EQ(handle->fileDescriptor(), -1);
  EXPECT_EQ(exceptionOf([&] { handle->availableData(); }),
            "NSFileHandleOperationException: *** -[NSConcreteFileHandle availableData]: Bad file "
            "descriptor");
  EXPECT_THROW(handle->waitForDataInBackgroundAndNotify(), Exception);
}

TEST_F(NSFileHandleTest, TheNotificationIsPostedOnceForEachWait) {
  ChunkObserver observer(_pipe->fileHandleForReading());
  _pipe->fileHandleForReading()->waitForDataInBackgroundAndNotify();
  const int writing = _pipe->fileHandleForWriting()->fileDescriptor();
  ASSERT_EQ(::write(writing, "a", 1), 1);
  _test.scheduler().runMain();
  EXPECT_THAT(observer.chunks, ElementsAre("a"));
  ASSERT_EQ(::write(writing, "b", 1), 1);
  _test.scheduler().runMain();
  EXPECT_THAT(observer.chunks, ElementsAre("a"));
  _pipe->fileHandleForReading()->waitForDataInBackgroundAndNotify();
  _test.scheduler().runMain();
  EXPECT_THAT(observer.chunks, ElementsAre("a", "b"));
}

TEST_F(NSFileHandleTest, AHandleThatIsGoneIsNotWaitedFor) {
  _pipe->fileHandleForReading()->waitForDataInBackgroundAndNotify();
  _pipe.reset();
  EXPECT_NO_THROW(_test.scheduler().runMain());
}

}  // namespace
