#include <atomic>
#include <condition_variable>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "tests/prefs/StoreFixture.h"

namespace zentrova::tests {
namespace {

using platform::Data;
using platform::Value;

class HBPreferencesThread : public StoreTest {
 protected:
  // Each file fits one call, so that the calls of concurrent writes would interleave.
  void expectOneWriteAfterTheOther() {
    std::vector<std::string> calls = process.systemCalls().calls();
    std::erase_if(calls, [](const std::string& c) { return c != "writev" && c != "renameat"; });
    ASSERT_FALSE(calls.empty());
    ASSERT_EQ(calls.size() % 2, 0U);
    for (std::size_t i = 0; i < calls.size(); ++i) {
      ASSERT_EQ(calls[i], i % 2 == 0 ? "writev" : "renameat") << "two writes at once";
    }
  }
};

// A background queue stores a picture while the main thread uses the same store. In any order, the
// file ends up equal to the memory.
TEST_F(HBPreferencesThread, FileEqualsMemoryWhenTwoThreadsSet) {
  constexpr int rounds = 60;
  const auto store = makeStore();
  const Data picture(std::string(40000, 'p'));
  process.systemCalls().clearCalls();
  std::atomic<bool> started = false;
  std::thread background([&] {
    const platform::ProcessScope scope(process.process());
    started = true;
    for (int round = 0; round < rounds; ++round) {
      store->setObject(picture, "backgroundImage");
      store->setObject(round, "background");
    }
  });
  while (!started) std::this_thread::yield();
  for (int round = 0; round < rounds; ++round) {
    store->setObject(round, "main");
    EXPECT_EQ(store->integerForKey("main"), round);
    const Value image = store->objectForKey("backgroundImage");
    EXPECT_TRUE(image.isNone() || image.asData()->size() == 40000U);
    if (round % 7 == 0) store->removeObjectForKey("backgroundImage");
  }
  background.join();
  EXPECT_EQ(store->integerForKey("main"), rounds - 1);
  EXPECT_EQ(store->integerForKey("background"), rounds - 1);
  EXPECT_EQ(fileContent(), store->dictRep()->snapshot());
  expectOneWriteAfterTheOther();
}

// Blocks a writer at the end of its write until it is released.
class Gate {
 public:
  void holdWriter() {
    std::unique_lock lock(_mutex);
    _held = true;
    _changed.notify_all();
    _changed.wait(lock, [this] { return _open; });
  }
  void waitForWriter() {
    std::unique_lock lock(_mutex);
    _changed.wait(lock, [this] { return _held; });
  }
  void open() {
    const std::lock_guard lock(_mutex);
    _open = true;
    _changed.notify_all();
  }

 private:
  std::mutex _mutex;
  std::condition_variable _changed;
  bool _held = false;
  bool _open = false;
};

// Readers do not block: the getters return while another thread is writing.
TEST_F(HBPreferencesThread, ReaderDoesNotWaitForAWrite) {
  const auto store = makeStore();
  Gate gate;
  const auto observer =
      process.files().addObserver([&](const platform::FileWrite&) { gate.holdWriter(); });
  std::thread background([&] {
    const platform::ProcessScope scope(process.process());
    store->setObject("new", "key");
  });
  gate.waitForWriter();
  EXPECT_EQ(store->stringForKey("key"), "new");
  EXPECT_TRUE(store->objectForKey("absent").isNone());
  EXPECT_EQ(store->dictRep()->count(), 1U);
  gate.open();
  background.join();
  process.files().removeObserver(observer);
  EXPECT_EQ(inFile("key"), Value("new"));
}

}  // namespace
}  // namespace zentrova::tests
