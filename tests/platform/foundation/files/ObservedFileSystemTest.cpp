#include <cerrno>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/foundation/files/DeviceFileSystem.h"
#include "platform/foundation/files/ObservedFileSystem.h"
#include "tests/support/FaultySystemCalls.h"
#include "tests/support/TemporaryDeviceTree.h"

namespace {

using platform::DeviceFileSystem;
using platform::FileWrite;
using platform::ObservedFileSystem;
using test_support::FaultySystemCalls;
using test_support::TemporaryDeviceTree;

class ObservedFileSystemTest : public testing::Test {
 protected:
  TemporaryDeviceTree _tree;
  std::shared_ptr<FaultySystemCalls> _calls = std::make_shared<FaultySystemCalls>();
  std::shared_ptr<DeviceFileSystem> _device =
      std::make_shared<DeviceFileSystem>(_tree.root(), _calls);
  ObservedFileSystem _files{_device};
};

TEST_F(ObservedFileSystemTest, RecordsEveryWriteAndWhetherItChangedTheBytes) {
  _files.writeAtomically("/a", "one");
  _files.writeAtomically("/a", "one");
  _files.writeAtomically("/a", "two");
  _files.writeAtomically("/a", "longer");
  const std::vector<FileWrite> writes = _files.takeWrites();
  ASSERT_EQ(writes.size(), 4U);
  EXPECT_EQ(writes[0].path, "/a");
  EXPECT_EQ(writes[0].size, 3U);
  EXPECT_TRUE(writes[0].changed) << "a new file";
  EXPECT_FALSE(writes[1].changed);
  EXPECT_TRUE(writes[2].changed) << "other bytes, same size";
  EXPECT_TRUE(writes[3].changed) << "another size";
  EXPECT_TRUE(_files.takeWrites().empty()) << "each is reported once";
}

TEST_F(ObservedFileSystemTest, SeesWhatOthersChangedMeanwhile) {
  _files.writeAtomically("/a", "one");
  _tree.write("/a", "two");
  _files.writeAtomically("/a", "one");
  EXPECT_TRUE(_files.takeWrites().back().changed);
}

TEST_F(ObservedFileSystemTest, AFailedWriteIsRecordedWithItsError) {
  _calls->fail("writev", ENOSPC);
  EXPECT_EQ(_files.writeAtomically("/a", "one").code, ENOSPC);
  const std::vector<FileWrite> writes = _files.takeWrites();
  ASSERT_EQ(writes.size(), 1U);
  EXPECT_EQ(writes[0].error.code, ENOSPC);
  EXPECT_FALSE(writes[0].changed);
}

TEST_F(ObservedFileSystemTest, ObserversAreToldAfterTheWrite) {
  std::vector<std::string> seen;
  const auto observer = _files.addObserver([&](const FileWrite& write) {
    seen.push_back(write.path + "=" + _tree.read(write.path).value_or("nothing"));
  });
  _files.writeAtomically("/a", "one");
  _files.removeObserver(observer);
  _files.writeAtomically("/a", "two");
  EXPECT_THAT(seen, testing::ElementsAre("/a=one"));
}

TEST_F(ObservedFileSystemTest, AnObserverMayWriteAndRemoveItself) {
  std::uint64_t observer = 0;
  observer = _files.addObserver([&](const FileWrite&) {
    _files.removeObserver(observer);
    _files.writeAtomically("/b", "x");
  });
  _files.writeAtomically("/a", "one");
  EXPECT_EQ(_files.takeWrites().size(), 2U);
}

TEST_F(ObservedFileSystemTest, KeepsNoMoreThanItsCapacity) {
  ObservedFileSystem small(_device, 2);
  for (const char* text : {"1", "2", "3"}) small.writeAtomically("/" + std::string(text), text);
  const std::vector<FileWrite> writes = small.takeWrites();
  ASSERT_EQ(writes.size(), 2U);
  EXPECT_EQ(writes[0].path, "/2");
}

TEST_F(ObservedFileSystemTest, PassesEverythingElseOn) {
  EXPECT_EQ(_files.createDirectory("/d").code, 0);
  EXPECT_EQ(_files.createSymbolicLink("/d/l", "x").code, 0);
  EXPECT_EQ(_files.destinationOfSymbolicLink("/d/l"), "x");
  _tree.write("/d/f", "text");
  EXPECT_EQ(_files.read("/d/f").bytes, "text");
  EXPECT_EQ(_files.read("/d/f", 2).error.code, EFBIG);
  EXPECT_EQ(_files.setMode("/d/f", 0600).code, 0);
  EXPECT_EQ(_files.attributesOfItem("/d/f")->mode, 0600U);
  EXPECT_TRUE(_files.fileExists("/d/f"));
  EXPECT_THAT(_files.contentsOfDirectory("/d"), testing::Optional(testing::ElementsAre("f", "l")));
  EXPECT_EQ(_files.hostPath("/d/f"), _tree.root() + "/d/f");
  EXPECT_EQ(_files.remove("/d").code, 0);
  EXPECT_TRUE(_files.takeWrites().empty());
}

}  // namespace
