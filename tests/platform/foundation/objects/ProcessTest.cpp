#include <atomic>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "platform/foundation/objects/DeviceTraits.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/scheduling/VirtualScheduler.h"
#include "platform/foundation/values/Exception.h"

namespace {

using platform::Exception;
using platform::Process;
using platform::ProcessScope;

struct Service {
  virtual ~Service() = default;
  virtual int number() const = 0;
};
struct NumberService : Service {
  explicit NumberService(int value) : _value(value) {}
  int number() const override { return _value; }
  int _value;
};

struct Counter {
  std::atomic<int> made{0};
};
struct MadeOnce {
  MadeOnce() { Process::current().service<Counter>().made++; }
};

TEST(Process, IsCurrentAsLongAsItsScopeLives) {
  EXPECT_EQ(Process::currentOrNull(), nullptr);
  Process outer;
  {
    const ProcessScope scope(outer);
    EXPECT_EQ(&Process::current(), &outer);
    Process inner;
    {
      const ProcessScope innerScope(inner);
      EXPECT_EQ(&Process::current(), &inner);
    }
    EXPECT_EQ(&Process::current(), &outer);
  }
  EXPECT_EQ(Process::currentOrNull(), nullptr);
}

TEST(Process, CurrentRaisesWhereThereIsNone) {
  try {
    Process::current();
    FAIL() << "nothing was raised";
  } catch (const Exception& exception) {
    EXPECT_EQ(exception.name(), "NSInternalInconsistencyException");
  }
}

TEST(Process, TheCurrentOneIsOfTheThread) {
  Process process;
  const ProcessScope scope(process);
  Process* seen = &process;
  std::thread([&] { seen = Process::currentOrNull(); }).join();
  EXPECT_EQ(seen, nullptr);
}

TEST(Process, GivesTheServiceThatWasProvidedLast) {
  Process process;
  EXPECT_EQ(process.serviceOrNull<Service>(), nullptr);
  process.provide<Service>(std::make_shared<NumberService>(1));
  process.provide<Service>(std::make_shared<NumberService>(2));
  EXPECT_EQ(process.service<Service>().number(), 2);
}

TEST(Process, AServiceThatIsMissingRaises) {
  Process process;
  EXPECT_THROW(process.service<Service>(), Exception);
}

TEST(Process, OnceMakesOneWhicheverThreadComesFirst) {
  Process process;
  process.provide(std::make_shared<Counter>());
  std::vector<std::thread> threads;
  threads.reserve(4);
  std::atomic<MadeOnce*> first{nullptr};
  std::atomic<bool> same{true};
  for (int index = 0; index < 4; ++index) {
    threads.emplace_back([&] {
      const ProcessScope scope(process);
      MadeOnce* expected = nullptr;
      MadeOnce* mine = &process.once<MadeOnce>();
      if (!first.compare_exchange_strong(expected, mine) && expected != mine) same = false;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_TRUE(same);
  EXPECT_EQ(process.service<Counter>().made, 1);
}

TEST(Process, EachHasItsOwn) {
  Process one;
  Process two;
  EXPECT_NE(&one.once<std::string>(), &two.once<std::string>());
}

TEST(Process, WaitingWorkGoesWhileTheProcessIsWhole) {
  bool found = false;
  struct SeesTheProcess {
    explicit SeesTheProcess(bool& isFound) : found(isFound) {}
    bool& found;
    ~SeesTheProcess() {
      found = Process::current().serviceOrNull<platform::DeviceTraits>() != nullptr;
    }
  };
  {
    Process process;
    process.provide(std::make_shared<platform::DeviceTraits>());
    process.provide<platform::Scheduler>(std::make_shared<platform::VirtualScheduler>(&process));
    process.service<platform::Scheduler>().asyncMain(
        [atEnd = std::make_shared<SeesTheProcess>(found)] { FAIL() << "must not run"; });
  }
  EXPECT_TRUE(found);
}

TEST(SystemVersion, ComparesAsThePlatformsVersionTest) {
  const platform::SystemVersion version{14, 8, 1};
  EXPECT_TRUE(version.isAtLeast(14));
  EXPECT_TRUE(version.isAtLeast(14, 8, 1));
  EXPECT_FALSE(version.isAtLeast(14, 8, 2));
  EXPECT_FALSE(version.isAtLeast(15, 0, 0));
  EXPECT_TRUE((platform::SystemVersion{15, 0, 0}).isAtLeast(15, 0, 0));
}

TEST(SystemVersion, TextLeavesOutAPatchOfZero) {
  EXPECT_EQ((platform::SystemVersion{15, 4, 0}).text(), "15.4");
  EXPECT_EQ((platform::SystemVersion{15, 4, 1}).text(), "15.4.1");
}

}  // namespace
