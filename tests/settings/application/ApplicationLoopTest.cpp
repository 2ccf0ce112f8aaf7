#include <algorithm>
#include <csignal>
#include <thread>

#include "platform/foundation/scheduling/MainQueue.h"
#include "settings/application/SettingsProcess.h"
#include "tests/settings/application/RootPageFixture.h"

namespace settings::test {
namespace {

// The application with the real clock, and its main loop.
class ApplicationLoop : public RootPageTest {
 protected:
  static constexpr const char* restart = "/var/jb/usr/bin/killall";
  static constexpr const char* shell = "/bin/bash";

  ApplicationLoop() {
    options.time = Time::real;
    options.traits.systemVersion = {15, 0, 0};
  }

  // Runs the loop until the condition holds after a turn. Returns the number of turns.
  int turnsUntil(const std::function<bool()>& condition) {
    int turns = 0;
    constexpr double patienceSeconds = 20;
    application().process()->scheduler().mainAfter(patienceSeconds, [this] {
      ADD_FAILURE() << "the condition never holds";
      application().stop();
    });
    application().run([&] {
      ++turns;
      if (condition()) application().stop();
    });
    return turns;
  }
  bool allProgramsHaveEnded() {
    return std::ranges::all_of(application().programRecords(),
                               [](const auto& record) { return record.exitStatus.has_value(); });
  }
};

TEST_F(ApplicationLoop, AStopBeforeTheRunLeavesNoTurn) {
  open();
  application().mainQueue().push([] {});
  application().stop();
  application().run([] { FAIL() << "a turn after the stop"; });
}

TEST_F(ApplicationLoop, WorkOfAnotherThreadIsDoneBeforeTheTurn) {
  open();
  bool isDone = false;
  std::thread other([&] { application().mainQueue().push([&] { isDone = true; }); });
  EXPECT_LE(turnsUntil([&] { return isDone; }), 2);
  other.join();
}

TEST_F(ApplicationLoop, ThereIsNoTurnBeforeDelayedWorkOfAPageIsDue) {
  open();
  bool isDone = false;
  application().process()->scheduler().mainAfter(0.1, [&] { isDone = true; });
  EXPECT_LE(turnsUntil([&] { return isDone; }), 3);
}

TEST_F(ApplicationLoop, ThereIsNoTurnBeforeAStartedProgramEnds) {
  putProgram(restart, "exec /bin/sleep 0.2");
  open();
  ASSERT_TRUE(tap("respring"));
  EXPECT_LE(turnsUntil([this] { return allProgramsHaveEnded(); }), 3);
  ASSERT_EQ(application().programRecords().size(), 1U);
}

TEST_F(ApplicationLoop, TheEndOfAProgramOfAnEarlierProcessIsATurn) {
  putProgram(restart, "exec /bin/sleep 0.2");
  open();
  ASSERT_TRUE(tap("respring"));
  open();
  EXPECT_LE(turnsUntil([this] { return allProgramsHaveEnded(); }), 3);
  ASSERT_EQ(application().programRecords().size(), 1U);
}

TEST_F(ApplicationLoop, StopEndsTheProgramThatAPageWaitsFor) {
  putProgram(shell, "while :; do :; done");
  open();
  std::thread other([this] { application().stop(); });
  EXPECT_TRUE(tap("version"));
  other.join();
  EXPECT_EQ(application().programRecords().at(0).exitStatus, 128 + SIGTERM);
  application().run([] { FAIL() << "a turn after the stop"; });
}

TEST_F(ApplicationLoop, WhatComesWhileAPageWaitsIsDoneMeanwhile) {
  putProgram(shell, "while [ ! -e \"${0%/*}/done\" ]; do /bin/sleep 0.01; done");
  open();
  application().mainQueue().push([this] { put("/bin/done", ""); });
  EXPECT_TRUE(tap("version"));
  EXPECT_EQ(application().programRecords().at(0).exitStatus, 0);
}

}  // namespace
}  // namespace settings::test
