#include <chrono>
#include <csignal>
#include <fstream>
#include <iterator>
#include <optional>
#include <thread>

#include "tests/settings/application/RootPageFixture.h"

namespace settings::test {
namespace {

// A page that waits for a program that does not end.
class Waiting : public RootPageTest {
 protected:
  static constexpr const char* shell = "/bin/bash";
  static constexpr const char* endless = "while :; do :; done";

  void openWith(const std::string& script) {
    putProgram(shell, script);
    open();
  }
  std::optional<int> exitStatus() { return application().programRecords().at(0).exitStatus; }
  std::string log() {
    std::string text;
    std::uint64_t cursor = 0;
    for (const auto& entry : application().logEntriesSince(cursor)) text += entry.message + "\n";
    return text;
  }
};

TEST_F(Waiting, ProgramIsEndedWhenPatienceIsOver) {
  openWith(endless);
  application().setPatience(0.1);
  EXPECT_TRUE(tap("version"));
  EXPECT_EQ(exitStatus(), 128 + SIGTERM);
  EXPECT_NE(log().find("[Settings] stopped the program that the page waits for: /bin/bash dpkg -s "
                       "com.hollowmere.zentrova"),
            std::string::npos);
  EXPECT_FALSE(application().crash());
}

TEST_F(Waiting, ProgramThatDoesNotWantToEndIsKilled) {
  openWith("trap '' TERM\n" + std::string(endless));
  application().setPatience(0.1);
  EXPECT_TRUE(tap("version"));
  EXPECT_EQ(exitStatus(), 128 + SIGKILL);
}

// Nobody reads after the first chunk, so the program blocks on the full pipe.
TEST_F(Waiting, ProgramThatPrintsMegabytesIsEndedAndItsFirstChunkShown) {
  openWith("exec head -c 5000000 /dev/zero");
  application().setPatience(0.2);
  EXPECT_TRUE(tap("version"));
  EXPECT_FALSE(footer().is_null());
  EXPECT_NE(exitStatus(), 0);
}

TEST_F(Waiting, TreeSaysWhatIsWaitedForAndStopEndsIt) {
  openWith(endless);
  tree();
  Json waiting;
  ActionResult other;
  application().setPatience(20);
  application().setWaitHandler([&] {
    if (!waiting.is_null()) return;
    waiting = presented();
    other = act({{"action", "tap"}}, rowNode("respring"));
    EXPECT_FALSE(application().perform({{"action", "reopen"}}));
    EXPECT_FALSE(act({{"action", "stop"}}, "no such node"));
    EXPECT_TRUE(act({{"action", "stop"}}, presentedNode()));
  });
  EXPECT_TRUE(tap("version"));
  EXPECT_EQ(waiting["kind"], "waiting");
  EXPECT_EQ(waiting["program"], "/bin/bash dpkg -s com.hollowmere.zentrova");
  EXPECT_FALSE(other);
  EXPECT_EQ(other.message, "the page waits for a program: stop it, or wait until it ends");
  EXPECT_TRUE(presented().empty());
  EXPECT_EQ(exitStatus(), 128 + SIGTERM);
  EXPECT_TRUE(tap("vibration"));
}

// Returns whether the process has ended, including a zombie.
bool hasEnded(const std::string& process) {
  std::ifstream file("/proc/" + process + "/stat");
  const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  const auto name = text.rfind(") ");
  return name == std::string::npos || text[name + 2] == 'Z';
}

TEST_F(Waiting, WhatTheProgramHasStartedEndsWithIt) {
  openWith("/bin/sleep 60 & printf '%s' $! > \"$0.child\"; wait");
  tree();
  application().setPatience(60);
  const auto child = [this] { return contents("/bin/bash.child"); };
  application().setWaitHandler([&] {
    if (!child().empty()) act({{"action", "stop"}}, presentedNode());
  });
  EXPECT_TRUE(tap("version"));
  EXPECT_EQ(exitStatus(), 128 + SIGTERM);
  ASSERT_NE(child(), "");
  const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!hasEnded(child()) && std::chrono::steady_clock::now() < limit) std::this_thread::yield();
  EXPECT_TRUE(hasEnded(child())) << child();
}

TEST_F(Waiting, ShortWaitIsNotShown) {
  openWith("printf 1");
  bool shown = false;
  application().setWaitHandler([&] { shown = true; });
  EXPECT_TRUE(tap("version"));
  EXPECT_FALSE(shown);
  EXPECT_FALSE(act({{"action", "stop"}}, "1"));
}

TEST_F(Waiting, ScriptSetsPatienceAndWhatAStandInPrints) {
  useWholeDevice();
  folder.write("answer", "Version: 7.7\n");
  ScriptOptions where;
  where.folder = folder.path();
  const Played played = play(
      "stdout /bin/bash answer\npatience 3\nopen\ntap #version\nget _versionLabel.text\n", where);
  EXPECT_EQ(played.status, ScriptStatus::done) << played.messages;
  EXPECT_EQ(played.output, "7.7\n");
}

}  // namespace
}  // namespace settings::test
