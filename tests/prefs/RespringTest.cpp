#include <gtest/gtest.h>

#include "prefs/Respring.h"
#include "tests/support/TestProcess.h"

namespace zentrova::tests {
namespace {

using Arguments = std::vector<std::string>;
using test_support::TestProcess;

constexpr std::string_view sbreload = "/var/jb/usr/bin/sbreload";
constexpr std::string_view killall = "/var/jb/usr/bin/killall";

class Respring : public testing::Test {
 protected:
  void restart(platform::SystemVersion version, bool hasReload) {
    process.traits().systemVersion = version;
    if (hasReload) process.tree().writeProgram(sbreload, "exit 0");
    restartHomeScreen();
  }
  void expectSpawned(std::string_view path, const Arguments& arguments) {
    const auto records = process.programs().records();
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].request.path, path);
    EXPECT_EQ(records[0].request.arguments, arguments);
    // A null environment is not an empty list of variables.
    EXPECT_EQ(records[0].request.environment, std::nullopt);
    EXPECT_FALSE(records[0].request.pipeStandardOutput);
  }
  void expectReload() { expectSpawned(sbreload, {"sbreload"}); }
  void expectKill() { expectSpawned(killall, {"killall", "-9", "SpringBoard"}); }

  TestProcess process;
};

TEST_F(Respring, ReloadsBefore15WhereSbreloadIsInstalled) {
  restart({14, 8, 1}, true);
  expectReload();
}

TEST_F(Respring, KillsBefore15WithoutSbreload) {
  restart({14, 0, 0}, false);
  expectKill();
}

TEST_F(Respring, KillsFrom15OnThoughSbreloadIsInstalled) {
  restart({15, 0, 0}, true);
  expectKill();
}

TEST_F(Respring, KillsOn16ThoughSbreloadIsInstalled) {
  restart({16, 2, 0}, true);
  expectKill();
}

TEST_F(Respring, KillsOn16WithoutSbreload) {
  restart({16, 0, 0}, false);
  expectKill();
}

TEST_F(Respring, ReloadsThroughALinkToSbreload) {
  process.tree().writeProgram("/var/jb/bin/reload", "exit 0");
  process.tree().makeFolder("/var/jb/usr/bin");
  process.tree().link(sbreload, "/var/jb/bin/reload");
  restart({13, 7, 0}, false);
  expectReload();
}

// A dangling link does not count as an existing file.
TEST_F(Respring, KillsWhereSbreloadIsALinkToNothing) {
  process.tree().makeFolder("/var/jb/usr/bin");
  process.tree().link(sbreload, "/var/jb/bin/gone");
  restart({13, 7, 0}, false);
  expectKill();
}

TEST_F(Respring, FailedStartDoesNothingVisible) {
  process.recordedPrograms().failToStart(killall, 2);
  EXPECT_NO_THROW(restart({15, 4, 0}, false));
  EXPECT_TRUE(process.log().entries().empty());
  EXPECT_EQ(process.programs().records().at(0).startError, 2);
}

// With real programs: the child sees no variable at all, and a missing program changes nothing.
TEST(RespringProgram, RunsWithoutAnyEnvironment) {
  TestProcess process(TestProcess::RunPrograms::real);
  process.tree().writeProgram(
      killall, "/usr/bin/env -0 > \"${0%/*}/seen\"; echo \"$@\" > \"${0%/*}/arguments\"");
  restartHomeScreen();
  const auto ended = [&] { return process.programs().records().at(0).exitStatus.has_value(); };
  ASSERT_TRUE(process.scheduler().runMainUntil(ended, 10));
  EXPECT_EQ(process.programs().records().at(0).exitStatus, 0);
  EXPECT_EQ(process.tree().read("/var/jb/usr/bin/arguments"), "-9 SpringBoard\n");
  const auto seen = process.tree().read("/var/jb/usr/bin/seen");
  ASSERT_TRUE(seen);
  // The shell itself sets at most these two variables; none come from the test's environment.
  EXPECT_EQ(seen->find("HOME="), std::string::npos);
  EXPECT_EQ(seen->find("USER="), std::string::npos);
  EXPECT_EQ(seen->find("PATH="), std::string::npos);
}

TEST(RespringProgram, MissingProgramIsIgnored) {
  TestProcess process(TestProcess::RunPrograms::real);
  EXPECT_NO_THROW(restartHomeScreen());
}

}  // namespace
}  // namespace zentrova::tests
