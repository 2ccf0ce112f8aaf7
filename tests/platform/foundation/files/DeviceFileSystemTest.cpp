#include <cerrno>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "tests/platform/foundation/files/DeviceFilesFixture.h"

namespace {

using platform::DeviceFileSystem;
using platform::FileType;
using test_support::FaultySystemCalls;
using test_support::TemporaryDeviceTree;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Optional;

class DeviceFileSystemTest : public DeviceFilesTest {
 protected:
  std::string textOf(std::string_view path) { return _files.read(path).bytes; }
  int readError(std::string_view path) { return _files.read(path).error.code; }
  unsigned modeOf(std::string_view path) {
    const auto attributes = _files.attributesOfItem(path);
    return attributes ? attributes->mode : 0;
  }
};

INSTANTIATE_TEST_SUITE_P(Both, DeviceFileSystemTest, DeviceFileSystemTest::bothResolutions(),
                         DeviceFileSystemTest::nameOf);

TEST_P(DeviceFileSystemTest, ReadsAFileWhole) {
  const std::string text("a\0b\n", 4);
  _tree.write("/etc/a", text);
  const auto contents = _files.read("/etc/a");
  EXPECT_EQ(contents.error.code, 0);
  EXPECT_EQ(contents.bytes, text);
}

TEST_P(DeviceFileSystemTest, ReadsAnEmptyFile) {
  _tree.write("/empty", "");
  EXPECT_EQ(readError("/empty"), 0);
  EXPECT_TRUE(_files.read("/empty").bytes.empty());
}

TEST_P(DeviceFileSystemTest, AMissingFileIsAnErrorThatSaysWhichAndWhy) {
  const auto contents = _files.read("/var/none");
  EXPECT_EQ(contents.error.code, ENOENT);
  EXPECT_EQ(contents.error.message, "cannot read /var/none: No such file or directory");
}

TEST_P(DeviceFileSystemTest, AFolderIsNotRead) {
  _tree.makeFolder("/folder");
  EXPECT_EQ(readError("/folder"), EISDIR);
  EXPECT_EQ(readError("/"), EISDIR);
}

TEST_P(DeviceFileSystemTest, APipeIsNotReadAndNobodyWaits) {
  ASSERT_EQ(::mkfifo(_tree.rawHostPath("/pipe").c_str(), 0600), 0);
  EXPECT_EQ(readError("/pipe"), EINVAL);
}

TEST_P(DeviceFileSystemTest, AFileOverTheLimitIsNotRead) {
  _tree.write("/a", "12345");
  EXPECT_EQ(_files.read("/a", 4).error.code, EFBIG);
  EXPECT_EQ(_files.read("/a", 4).error.message,
            "cannot read /a: it has more than 4 bytes, which is the limit");
  EXPECT_EQ(_files.read("/a", 5).bytes, "12345");
}

TEST_P(DeviceFileSystemTest, ShortReadsAndSignalsAreHandled) {
  _tree.write("/a", "0123456789");
  _calls->limitTransfer(3);
  _calls->fail("read", EINTR, 2);
  EXPECT_EQ(textOf("/a"), "0123456789");
}

TEST_P(DeviceFileSystemTest, AFailingReadIsAnError) {
  _tree.write("/a", "x");
  _calls->fail("read", EIO);
  EXPECT_EQ(readError("/a"), EIO);
  _calls->fail("fstat", EIO);
  EXPECT_EQ(readError("/a"), EIO);
}

TEST_P(DeviceFileSystemTest, OddPathsAreErrors) {
  EXPECT_EQ(readError(""), ENOENT);
  EXPECT_EQ(readError(std::string_view("/a\0b", 4)), EINVAL);
  EXPECT_EQ(readError("/" + std::string(300, 'x')), ENAMETOOLONG);
  EXPECT_EQ(readError("/" + std::string(5000, 'x')), ENAMETOOLONG);
  EXPECT_EQ(_files.writeAtomically("", "x").code, ENOENT);
  EXPECT_EQ(_files.writeAtomically(std::string_view("/a\0b", 4), "x").code, EINVAL);
  EXPECT_EQ(_files.writeAtomically("/", "x").code, EISDIR);
}

TEST_P(DeviceFileSystemTest, ARootThatIsMissingFailsEveryOperation) {
  DeviceFileSystem files(_tree.rawHostPath("/nowhere"), _calls, GetParam());
  EXPECT_EQ(files.read("/a").error.code, ENOENT);
  EXPECT_EQ(files.writeAtomically("/a", "x").code, ENOENT);
  EXPECT_FALSE(files.fileExists("/"));
  EXPECT_EQ(files.hostPath("/a"), std::nullopt);
}

TEST_P(DeviceFileSystemTest, AbsoluteLinksStayInTheTree) {
  _tree.write("/private/preboot/jb/etc/passwd", "the tree's");
  _tree.makeFolder("/var");
  _tree.link("/var/jb", "/private/preboot/jb");
  EXPECT_EQ(textOf("/var/jb/etc/passwd"), "the tree's");
  _tree.link("/direct", "/etc/passwd");
  EXPECT_EQ(readError("/direct"), ENOENT) << "must not be the machine's own file";
}

TEST_P(DeviceFileSystemTest, RelativeLinksStayInTheTree) {
  _tree.write("/a/file", "inside");
  _tree.link("/a/up", "../../../../../a/file");
  _tree.link("/a/sibling", "file");
  EXPECT_EQ(textOf("/a/up"), "inside");
  EXPECT_EQ(textOf("/a/sibling"), "inside");
}

TEST_P(DeviceFileSystemTest, UpwardAtTheRootStaysAtTheRoot) {
  _tree.write("/a", "inside");
  EXPECT_EQ(textOf("/../../../a"), "inside");
  EXPECT_EQ(textOf("/.././a"), "inside");
  EXPECT_EQ(readError("/../../../etc/hostname"), ENOENT);
}

TEST_P(DeviceFileSystemTest, UpwardLeavesALinkedFolderWhereItReallyIs) {
  _tree.write("/deep/er/file", "x");
  _tree.write("/deep/beside", "beside");
  _tree.link("/short", "/deep/er");
  EXPECT_EQ(textOf("/short/../beside"), "beside");
}

TEST_P(DeviceFileSystemTest, ChainsOfLinksAreFollowed) {
  _tree.write("/end", "x");
  _tree.link("/link0", "/end");
  for (int index = 1; index < 10; ++index) {
    _tree.link("/link" + std::to_string(index), "link" + std::to_string(index - 1));
  }
  EXPECT_EQ(textOf("/link9"), "x");
}

TEST_P(DeviceFileSystemTest, LinksInACircleAreAnError) {
  _tree.link("/one", "/two");
  _tree.link("/two", "one");
  _tree.link("/self", "self");
  EXPECT_EQ(readError("/one"), ELOOP);
  EXPECT_EQ(readError("/self"), ELOOP);
  EXPECT_EQ(readError("/one/below"), ELOOP);
  EXPECT_EQ(_files.writeAtomically("/one/below", "x").code, ELOOP);
  EXPECT_FALSE(_files.fileExists("/one"));
  EXPECT_EQ(_files.hostPath("/one"), std::nullopt);
}

TEST_P(DeviceFileSystemTest, AFileUsedAsAFolderIsAnError) {
  _tree.write("/a", "x");
  EXPECT_EQ(readError("/a/b"), ENOTDIR);
  EXPECT_EQ(readError("/a/"), ENOTDIR);
  EXPECT_EQ(_files.writeAtomically("/a/b", "x").code, ENOTDIR);
}

TEST_P(DeviceFileSystemTest, PathsMayLackTheFirstSlashAndHaveMoreOfThem) {
  _tree.write("/a/b", "x");
  EXPECT_EQ(textOf("a/b"), "x");
  EXPECT_EQ(textOf("//a///b"), "x");
}

TEST_P(DeviceFileSystemTest, AttributesAreOfTheItemItself) {
  _tree.write("/file", "12345");
  _tree.setMode("/file", 0640);
  _tree.makeFolder("/folder");
  _tree.link("/link", "/file");
  ASSERT_EQ(::mkfifo(_tree.rawHostPath("/pipe").c_str(), 0600), 0);
  EXPECT_EQ(_files.attributesOfItem("/file")->type, FileType::regular);
  EXPECT_EQ(_files.attributesOfItem("/file")->size, 5U);
  EXPECT_EQ(_files.attributesOfItem("/file")->mode, 0640U);
  EXPECT_EQ(_files.attributesOfItem("/folder")->type, FileType::directory);
  EXPECT_EQ(_files.attributesOfItem("/link")->type, FileType::symbolicLink);
  EXPECT_EQ(_files.attributesOfItem("/pipe")->type, FileType::other);
  EXPECT_EQ(_files.attributesOfItem("/none"), std::nullopt);
  EXPECT_EQ(_files.attributesOfItem("/")->type, FileType::directory);
}

TEST_P(DeviceFileSystemTest, DestinationsOfLinksAreGivenAsTheyStand) {
  _tree.link("/absolute", "/jb/");
  _tree.link("/relative", "../x//y");
  EXPECT_EQ(_files.destinationOfSymbolicLink("/absolute"), "/jb/");
  EXPECT_EQ(_files.destinationOfSymbolicLink("/relative"), "../x//y");
  _tree.write("/file", "");
  EXPECT_EQ(_files.destinationOfSymbolicLink("/file"), std::nullopt);
  EXPECT_EQ(_files.destinationOfSymbolicLink("/none"), std::nullopt);
}

TEST_P(DeviceFileSystemTest, ExistenceFollowsLinks) {
  _tree.write("/file", "");
  _tree.link("/link", "file");
  _tree.link("/dangling", "nothing");
  EXPECT_TRUE(_files.fileExists("/file"));
  EXPECT_TRUE(_files.fileExists("/link"));
  EXPECT_TRUE(_files.fileExists("/"));
  EXPECT_FALSE(_files.fileExists("/dangling"));
  EXPECT_FALSE(_files.fileExists("/none"));
}

TEST_P(DeviceFileSystemTest, ContentsOfFoldersAreSorted) {
  _tree.write("/f/b", "");
  _tree.write("/f/a", "");
  _tree.write("/f/B", "");
  EXPECT_THAT(_files.contentsOfDirectory("/f"), Optional(ElementsAre("B", "a", "b")));
  EXPECT_EQ(_files.contentsOfDirectory("/f/a"), std::nullopt);
  EXPECT_EQ(_files.contentsOfDirectory("/none"), std::nullopt);
}

TEST_P(DeviceFileSystemTest, CreatesFoldersWithThoseAbove) {
  EXPECT_EQ(_files.createDirectory("/a/b/c").code, 0);
  EXPECT_EQ(_files.attributesOfItem("/a/b/c")->type, FileType::directory);
  EXPECT_EQ(_files.createDirectory("/a/b/c/").code, 0) << "an existing folder is accepted";
  EXPECT_EQ(_files.createDirectory("/").code, 0);
}

TEST_P(DeviceFileSystemTest, CreatesFoldersThroughLinks) {
  _tree.makeFolder("/real");
  _tree.link("/link", "/real");
  EXPECT_EQ(_files.createDirectory("/link/x/y").code, 0);
  EXPECT_TRUE(_files.fileExists("/real/x/y"));
}

TEST_P(DeviceFileSystemTest, DoesNotCreateAFolderOverAFileOrADanglingLink) {
  _tree.write("/file", "");
  _tree.link("/dangling", "nothing");
  EXPECT_NE(_files.createDirectory("/file").code, 0);
  EXPECT_NE(_files.createDirectory("/file/x").code, 0);
  EXPECT_NE(_files.createDirectory("/dangling/x").code, 0);
  _calls->fail("mkdirat", ENOSPC);
  EXPECT_EQ(_files.createDirectory("/new").code, ENOSPC);
}

TEST_P(DeviceFileSystemTest, RemovesFilesLinksAndWholeFolders) {
  _tree.write("/keep/file", "x");
  _tree.write("/f/a/b/c", "");
  _tree.write("/f/a/d", "");
  _tree.link("/f/out", "/keep");
  EXPECT_EQ(_files.remove("/f").code, 0);
  EXPECT_FALSE(_files.attributesOfItem("/f"));
  EXPECT_EQ(textOf("/keep/file"), "x") << "a link is removed, not what it leads to";
  EXPECT_EQ(_files.remove("/f").code, ENOENT);
  EXPECT_EQ(_files.remove("/").code, EBUSY);
}

TEST_P(DeviceFileSystemTest, ARemovalThatFailsSaysSo) {
  _tree.write("/f/a", "");
  _calls->fail("unlinkat", EPERM, 2);
  EXPECT_EQ(_files.remove("/f").code, EPERM);
}

TEST_P(DeviceFileSystemTest, CreatesLinksWithAnyText) {
  EXPECT_EQ(_files.createSymbolicLink("/l", "/anywhere/at all").code, 0);
  EXPECT_EQ(_files.destinationOfSymbolicLink("/l"), "/anywhere/at all");
  EXPECT_EQ(_files.createSymbolicLink("/l", "x").code, EEXIST);
  EXPECT_EQ(_files.createSymbolicLink("/m", std::string_view("a\0b", 3)).code, EINVAL);
}

TEST_P(DeviceFileSystemTest, ModesAreSetOnWhatALinkLeadsTo) {
  _tree.write("/file", "");
  _tree.link("/link", "file");
  EXPECT_EQ(_files.setMode("/link", 0600).code, 0);
  EXPECT_EQ(modeOf("/file"), 0600U);
  EXPECT_EQ(_files.setMode("/none", 0600).code, ENOENT);
}

TEST_P(DeviceFileSystemTest, HostPathsHaveNoLinks) {
  _tree.write("/private/jb/usr/bin/killall", "");
  _tree.makeFolder("/var");
  _tree.link("/var/jb", "/private/jb");
  EXPECT_EQ(_files.hostPath("/var/jb/usr/bin/killall"),
            _tree.root() + "/private/jb/usr/bin/killall");
  EXPECT_EQ(_files.hostPath("/var/jb/not/there"), _tree.root() + "/private/jb/not/there");
  EXPECT_EQ(_files.hostPath("/var/jb/none/../x"), std::nullopt);
  EXPECT_EQ(_files.hostPath("/"), _tree.root());
  EXPECT_EQ(_files.hostPath("/.."), _tree.root());
}

TEST_P(DeviceFileSystemTest, ATreeThatIsTheMachinesOwnRootWorks) {
  DeviceFileSystem files("/", _calls, GetParam());
  _tree.write("/a", "x");
  _tree.link("/l", _tree.rawHostPath("/a"));
  EXPECT_EQ(files.read(_tree.rawHostPath("/l")).bytes, "x");
  EXPECT_EQ(files.hostPath("/"), "/");
  EXPECT_EQ(files.hostPath(_tree.rawHostPath("/a")), _tree.rawHostPath("/a"));
  EXPECT_EQ(files.writeAtomically(_tree.rawHostPath("/b"), "y").code, 0);
  EXPECT_EQ(textOf("/b"), "y");
}

TEST_P(DeviceFileSystemTest, HoldsExactlyComparesWithoutReadingMoreThanItMust) {
  const std::string big(200000, 'x');
  _tree.write("/a", big);
  const auto holds = [&](std::vector<std::string_view> pieces) {
    return _files.holdsExactly("/a", pieces);
  };
  const std::string_view view = big;
  EXPECT_EQ(holds({view}), true);
  EXPECT_EQ(holds({view.substr(0, 70000), "", view.substr(70000)}), true);
  std::string other = big;
  other[199999] = 'y';
  EXPECT_EQ(holds({other}), false);
  _calls->clearCalls();
  EXPECT_EQ(holds({"x"}), false);
  EXPECT_EQ(_calls->count("read"), 0U);
  other = "y" + big.substr(1);
  EXPECT_EQ(holds({other}), false);
  EXPECT_EQ(_calls->count("read"), 1U);
  EXPECT_EQ(_files.holdsExactly("/none", {}), std::nullopt);
}

TEST(DeviceFileSystem, GoesStepByStepWhereTheKernelCannotResolve) {
  TemporaryDeviceTree tree;
  tree.write("/var/jb/a", "x");
  const auto calls = std::make_shared<FaultySystemCalls>();
  DeviceFileSystem files(tree.root(), calls);
  calls->fail("openat2", ENOSYS, FaultySystemCalls::always);
  EXPECT_EQ(files.read("/var/jb/a").bytes, "x");
  EXPECT_EQ(files.read("/var/jb/a").bytes, "x");
  EXPECT_EQ(calls->count("openat2"), 1U) << "the kernel is asked once";
}

TEST(DeviceFileSystem, ReadingTakesFourSystemCalls) {
  TemporaryDeviceTree tree;
  tree.write("/var/jb/a", "x");
  const auto calls = std::make_shared<FaultySystemCalls>();
  DeviceFileSystem files(tree.root(), calls);
  calls->clearCalls();
  EXPECT_EQ(files.read("/var/jb/a").bytes, "x");
  EXPECT_THAT(calls->calls(), ElementsAre("openat2", "fstat", "read", "close"));
}

}  // namespace
