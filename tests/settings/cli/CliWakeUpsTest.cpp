#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>

#include "settings/device/TreeWriter.h"
#include "tests/settings/cli/ServeFixture.h"

namespace settings::test {
namespace {

// Runs instead of a program of the device, and counts how often its parent, the server, wakes up
// within a second. Starts when the test tells it to, so that earlier work has finished.
class WakeUps : public CliServe {
 protected:
  void putCounter(std::string_view path) {
    TreeWriter writer(device);
    writer.program(path,
                   "#!/bin/sh\n"
                   "here=${0%/*}\n"
                   "while [ ! -e $here/begin ]; do /bin/sleep 0.05; done\n"
                   "/bin/sleep 1\n"
                   "/bin/cat /proc/uptime /proc/$PPID/task/*/status > $here/before\n"
                   "/bin/sleep 1\n"
                   "/bin/cat /proc/uptime /proc/$PPID/task/*/status > $here/after\n");
    ASSERT_EQ(writer.problem(), "");
    _folder = std::filesystem::path(device + std::string(path)).parent_path();
  }
  void begin() const { std::ofstream(_folder / "begin") << "now"; }
  // Sum over all threads, in one second.
  double counted() const {
    const Reading before = read("before");
    const Reading after = read("after");
    const double rate = (after.wakeUps - before.wakeUps) / (after.seconds - before.seconds);
    std::cout << rate << " wake-ups in a second\n";
    return rate;
  }

 private:
  struct Reading {
    double seconds = 0;
    double wakeUps = 0;
  };
  Reading read(const std::string& name) const {
    std::ifstream file(_folder / name);
    Reading reading;
    file >> reading.seconds;
    int threads = 0;
    for (std::string line; std::getline(file, line);) {
      if (!line.starts_with("voluntary_ctxt_switches:")) continue;
      reading.wakeUps += std::stod(line.substr(line.find(':') + 1));
      ++threads;
    }
    EXPECT_GT(threads, 1) << name;
    return reading;
  }

  std::filesystem::path _folder;
};

TEST_F(WakeUps, ThereIsNoneWhileAStartedProgramRuns) {
  putCounter("/var/jb/usr/bin/killall");
  PageClient browser(address);
  showAllRows(browser);
  tapRow(browser, "respring");
  begin();
  nlohmann::json side;
  do {
    side = browser.next("side");
    ASSERT_FALSE(side.is_null());
  } while (!side.contains("programs") || side["programs"][0]["exit"].is_null());
  EXPECT_EQ(side["programs"][0]["exit"], 0);
  EXPECT_EQ(counted(), 0);
}

TEST_F(WakeUps, ThereAreFewWhileAPageWaitsForAProgram) {
  putCounter("/bin/bash");
  begin();
  PageClient browser(address);
  showAllRows(browser);
  tapRow(browser, "version");
  EXPECT_LT(counted(), 5);
}

}  // namespace
}  // namespace settings::test
