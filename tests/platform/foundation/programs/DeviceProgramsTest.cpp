#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#include "platform/foundation/files/DeviceFileSystem.h"
#include "platform/foundation/programs/DevicePrograms.h"
#include "tests/support/RecordingPrograms.h"
#include "tests/support/TestProcess.h"

namespace {

using platform::AtEnd;
using platform::DeviceFileSystem;
using platform::DevicePrograms;
using platform::ProgramRecord;
using platform::ProgramRequest;
using platform::RunningProgram;
using test_support::RecordingPrograms;
using test_support::TemporaryDeviceTree;
using test_support::TestProcess;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Waits for a condition that depends on a child process.
bool comesTrue(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::yield();
  }
  return true;
}

class DeviceProgramsTest : public testing::Test {
 protected:
  ProgramRequest request(const std::string& path, std::vector<std::string> arguments = {}) {
    ProgramRequest made;
    made.path = path;
    made.arguments = std::move(arguments);
    if (made.arguments.empty()) made.arguments = {path};
    made.pipeStandardOutput = true;
    return made;
  }
  std::string allOutput(RunningProgram& program) {
    std::string all;
    for (std::string chunk = program.readAvailable(); !chunk.empty();
         chunk = program.readAvailable()) {
      all += chunk;
    }
    return all;
  }
  int exitOf(RunningProgram& program) {
    EXPECT_TRUE(comesTrue([&] { return program.exitStatus().has_value(); }));
    return program.exitStatus().value_or(-1);
  }

  TemporaryDeviceTree _tree;
  DevicePrograms _programs{std::make_shared<DeviceFileSystem>(_tree.root()), AtEnd::kill};
};

TEST_F(DeviceProgramsTest, StartsAProgramOfTheTreeWithItsArguments) {
  _tree.writeProgram("/private/preboot/jb/usr/bin/killall", "echo \"$#|$1|$2\"; exit 3");
  const auto program =
      _programs.start(request("/var/jb/usr/bin/killall", {"killall", "-9", "SpringBoard"}));
  ASSERT_TRUE(program);
  EXPECT_EQ(allOutput(*program), "2|-9|SpringBoard\n");
  EXPECT_EQ(exitOf(*program), 3);
  const std::vector<ProgramRecord> records = _programs.records();
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0].request.path, "/var/jb/usr/bin/killall");
  EXPECT_THAT(records[0].request.arguments, ElementsAre("killall", "-9", "SpringBoard"));
  EXPECT_EQ(records[0].request.environment, std::nullopt);
  EXPECT_EQ(records[0].exitStatus, 3);
  EXPECT_EQ(records[0].startError, 0);
}

TEST_F(DeviceProgramsTest, NoEnvironmentIsAnEmptyOne) {
  // The shell adds a few variables; /proc has the original environment.
  _tree.writeProgram("/env", "/bin/cat /proc/$$/environ");
  const auto program = _programs.start(request("/env"));
  ASSERT_TRUE(program);
  EXPECT_EQ(allOutput(*program), "");
  ProgramRequest withOne = request("/env");
  withOne.environment = {"A=1"};
  EXPECT_EQ(allOutput(*_programs.start(withOne)), std::string("A=1\0", 4));
}

TEST_F(DeviceProgramsTest, AMissingProgramIsNotStartedAndTheRecordSaysWhy) {
  EXPECT_FALSE(_programs.start(request("/var/jb/usr/bin/sbreload")));
  EXPECT_EQ(_programs.records().at(0).startError, ENOENT);
  EXPECT_EQ(_programs.records().at(0).exitStatus, std::nullopt);
}

TEST_F(DeviceProgramsTest, NeverStartsAProgramOfTheMachineItself) {
  EXPECT_FALSE(_programs.start(request("/bin/sh")));
  _tree.link("/escape", "/../../../../bin/sh");
  EXPECT_FALSE(_programs.start(request("/escape")));
}

TEST_F(DeviceProgramsTest, AFileThatIsNoProgramIsNotStarted) {
  _tree.write("/text", "#!/bin/sh\n");
  EXPECT_FALSE(_programs.start(request("/text")));
  EXPECT_EQ(_programs.records().at(0).startError, EACCES);
  _tree.link("/circle", "circle");
  EXPECT_FALSE(_programs.start(request("/circle")));
  EXPECT_NE(_programs.records().at(1).startError, 0);
}

TEST_F(DeviceProgramsTest, ASignalIsToldAsTheShellDoes) {
  _tree.writeProgram("/wait", "exec /bin/sleep 1000");
  const auto program = _programs.start(request("/wait"));
  ASSERT_TRUE(program);
  EXPECT_EQ(program->exitStatus(), std::nullopt);
  program->terminate();
  EXPECT_EQ(exitOf(*program), 128 + SIGTERM);
}

TEST_F(DeviceProgramsTest, AProgramLeadsAGroupOfItsOwn) {
  _tree.writeProgram("/group", "read -r line < /proc/self/stat; set -- $line; echo \"$5\"");
  const auto program = _programs.start(request("/group"));
  ASSERT_TRUE(program);
  EXPECT_EQ(allOutput(*program), std::to_string(program->processIdentifier()) + "\n");
}

// Starts another program, prints, and waits for it.
constexpr const char* startsAnother = "/bin/sleep 60 & echo started; wait";

// Returns whether the output ends, so that no process has the writing end open.
bool outputEnds(RunningProgram& program) {
  constexpr int milliseconds = 20000;
  pollfd output{program.outputDescriptor(), POLLIN, 0};
  return ::poll(&output, 1, milliseconds) == 1 && program.readAvailable().empty();
}

TEST_F(DeviceProgramsTest, ASignalReachesWhatTheProgramHasStarted) {
  _tree.writeProgram("/family", startsAnother);
  for (const int number : {SIGTERM, SIGKILL}) {
    const auto program = _programs.start(request("/family"));
    ASSERT_TRUE(program);
    ASSERT_EQ(program->readAvailable(), "started\n");
    _programs.sendSignal(_programs.records().back().id, number);
    EXPECT_EQ(exitOf(*program), 128 + number);
    EXPECT_TRUE(outputEnds(*program)) << "its own children keep running";
  }
}

TEST_F(DeviceProgramsTest, KillAtEndReachesWhatTheProgramHasStarted) {
  _tree.writeProgram("/family", startsAnother);
  std::shared_ptr<RunningProgram> program;
  {
    DevicePrograms programs(std::make_shared<DeviceFileSystem>(_tree.root()), AtEnd::kill);
    program = programs.start(request("/family"));
    ASSERT_TRUE(program);
    ASSERT_EQ(program->readAvailable(), "started\n");
  }
  EXPECT_TRUE(outputEnds(*program)) << "its own children keep running";
}

TEST_F(DeviceProgramsTest, ChildrenGetTheStandardDescriptorsOnly) {
  // Without close-on-exec, like the descriptors of other libraries.
  const int opened = ::open("/dev/null", O_RDONLY);
  const int careless = ::fcntl(opened, F_DUPFD, 100);
  ASSERT_GE(careless, 100);
  _tree.writeProgram("/list", "for each in /proc/$$/fd/*; do echo \"${each##*/}\"; done");
  const auto program = _programs.start(request("/list"));
  ASSERT_TRUE(program);
  const std::string listing = allOutput(*program);
  ::close(careless);
  ::close(opened);
  EXPECT_THAT(listing, HasSubstr("0\n1\n"));
  EXPECT_THAT(listing, testing::Not(HasSubstr("\n" + std::to_string(careless) + "\n")));
}

TEST_F(DeviceProgramsTest, EndedChildrenAreNoZombies) {
  _tree.writeProgram("/quick", "exit 0");
  const auto program = _programs.start(request("/quick"));
  ASSERT_TRUE(program);
  EXPECT_EQ(exitOf(*program), 0);
  EXPECT_EQ(::kill(program->processIdentifier(), 0), -1);
  EXPECT_EQ(errno, ESRCH);
}

TEST_F(DeviceProgramsTest, ADroppedChildGoesOnAndIsReaped) {
  _tree.writeProgram("/later", "echo done > \"$1\"");
  const std::string result = _tree.rawHostPath("/result");
  ProgramRequest dropped = request("/later", {"later", result});
  dropped.pipeStandardOutput = false;
  ASSERT_TRUE(_programs.start(dropped));
  EXPECT_TRUE(comesTrue([&] { return _programs.records().at(0).exitStatus == 0; }));
  EXPECT_EQ(_tree.read("/result"), "done\n");
}

TEST_F(DeviceProgramsTest, KillAtEndLeavesNoProcessBehind) {
  _tree.writeProgram("/wait", "exec /bin/sleep 1000");
  int child = 0;
  {
    DevicePrograms programs(std::make_shared<DeviceFileSystem>(_tree.root()), AtEnd::kill);
    child = programs.start(request("/wait"))->processIdentifier();
    EXPECT_EQ(::kill(child, 0), 0);
  }
  EXPECT_EQ(::kill(child, 0), -1);
}

TEST_F(DeviceProgramsTest, LetRunLeavesTheChildRunningAndStillReapsIt) {
  _tree.writeProgram("/wait", "exec /bin/sleep 1000");
  std::shared_ptr<RunningProgram> program;
  {
    DevicePrograms programs(std::make_shared<DeviceFileSystem>(_tree.root()));
    program = programs.start(request("/wait"));
    ASSERT_TRUE(program);
  }
  EXPECT_EQ(program->exitStatus(), std::nullopt);
  program->terminate();
  EXPECT_EQ(exitOf(*program), 128 + SIGTERM);
  EXPECT_EQ(::kill(program->processIdentifier(), 0), -1);
}

TEST_F(DeviceProgramsTest, OutputCanGoToADescriptorOfTheCaller) {
  _tree.writeProgram("/hello", "echo hello");
  int pipe[2] = {-1, -1};
  ASSERT_EQ(::pipe2(pipe, O_CLOEXEC), 0);
  ProgramRequest toPipe = request("/hello");
  toPipe.pipeStandardOutput = false;
  toPipe.standardOutput = pipe[1];
  const auto program = _programs.start(toPipe);
  ASSERT_TRUE(program);
  EXPECT_EQ(program->outputDescriptor(), -1);
  EXPECT_EQ(program->readAvailable(), "");
  char text[16] = {};
  EXPECT_EQ(::read(pipe[0], text, sizeof(text)), 6);
  EXPECT_STREQ(text, "hello\n");
  ::close(pipe[0]);
  ::close(pipe[1]);
  EXPECT_EQ(exitOf(*program), 0);
}

TEST(PosixSpawn, GivesTheChildsIdOrTheReason) {
  TestProcess test;
  test.recordedPrograms().failToStart("/var/jb/usr/bin/sbreload", EPERM);
  int child = 0;
  EXPECT_EQ(platform::posix_spawn(&child, "/var/jb/usr/bin/killall", {"killall", "-9"}, {}), 0);
  EXPECT_GT(child, 0);
  EXPECT_EQ(platform::posix_spawn(nullptr, "/var/jb/usr/bin/sbreload", {"sbreload"}, {}), EPERM);
  const auto records = test.programs().records();
  ASSERT_EQ(records.size(), 2U);
  EXPECT_EQ(records[0].request.environment, std::nullopt);
  EXPECT_THAT(records[1].request.arguments, ElementsAre("sbreload"));
}

TEST(PosixSpawn, StartsProgramsOfTheTree) {
  TestProcess test(TestProcess::RunPrograms::real);
  test.tree().writeProgram("/run", "echo \"$1\" > \"$2\"");
  const std::string result = test.tree().rawHostPath("/result");
  EXPECT_EQ(platform::posix_spawn(nullptr, "/run", {"run", "text", result}, {}), 0);
  EXPECT_TRUE(comesTrue([&] { return test.programs().records().at(0).exitStatus == 0; }));
  EXPECT_EQ(test.tree().read("/result"), "text\n");
  EXPECT_EQ(platform::posix_spawn(nullptr, "/none", {"none"}, {}), ENOENT);
}

TEST(RecordingPrograms, AnswersAsItWasTold) {
  RecordingPrograms programs;
  programs.answer("/a", "output", 5);
  ProgramRequest request;
  request.path = "/a";
  request.pipeStandardOutput = true;
  const auto program = programs.start(request);
  ASSERT_TRUE(program);
  EXPECT_EQ(program->readAvailable(), "output");
  EXPECT_EQ(program->readAvailable(), "");
  EXPECT_EQ(program->exitStatus(), 5);
}

}  // namespace
