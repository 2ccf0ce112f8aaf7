#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "platform/foundation/files/NSFileHandle.h"
#include "platform/foundation/objects/NSNotificationCenter.h"
#include "platform/foundation/values/Exception.h"
#include "platform/uikit/views/UILabel.h"
#include "tests/root/RootFixture.h"

namespace zentrova::tests {
namespace {

using platform::UILabel;
using platform::Value;
using Text = std::optional<std::string>;

// The tree's shell runs the script of the test.
class VersionQuery : public RootTest {
 protected:
  static constexpr std::string_view shell = "/bin/bash";
  static constexpr int pipeSize = 65536;

  VersionQuery() : RootTest(test_support::TestProcess::RunPrograms::real) {
    writeRoot();
    page = makePage();
    page->setVersionLabel(label);
  }
  void shellDoes(std::string_view script) { process.tree().writeProgram(shell, script); }
  // The text of the label after a query.
  Text ask() {
    page->getCurrentVersion();
    return label->text();
  }
  std::size_t openDescriptors() {
    const std::filesystem::directory_iterator entries("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
  }
  // Runs the work when data arrives, before the page is notified.
  void whenDataCome(std::function<void(platform::NSFileHandle&)> work) {
    platform::NSNotificationCenter::defaultCenter().addObserverForName(
        std::string(platform::NSFileHandleDataAvailableNotification), nullptr,
        [work = std::move(work)](const platform::NSNotification& notification) {
          work(dynamic_cast<platform::NSFileHandle&>(*notification.object));
        });
  }

  std::shared_ptr<UILabel> label = platform::make<UILabel>();
};

TEST_F(VersionQuery, OnlyTheVersionWordsGoAndTheLineEndsStay) {
  shellDoes("printf 'Package: com.hollowmere.zentrova\\nVersion: 1.2.3\\n'");
  EXPECT_EQ(ask(), "Package: com.hollowmere.zentrova\n1.2.3\n");
}

TEST_F(VersionQuery, EveryOccurrenceGoesWhereverItStands) {
  shellDoes("printf 'Version: a Version: b\\nX-Version: c\\nVersion: Version: d\\r\\n'");
  EXPECT_EQ(ask(), "a b\nX-c\nd\r\n");
}

TEST_F(VersionQuery, OtherSpellingsStay) {
  const std::string output = "version: 1\\nVersion:2\\nVersion :3\\n Version:\\t4";
  shellDoes("printf '" + output + "'");
  EXPECT_EQ(ask(), "version: 1\nVersion:2\nVersion :3\n Version:\t4");
}

// Text that is joined by a removal is not removed again.
TEST_F(VersionQuery, TextIsGoneThroughOnce) {
  shellDoes("printf 'VerVersion: sion: 1'");
  EXPECT_EQ(ask(), "Version: 1");
}

TEST_F(VersionQuery, ShellIsAskedWithTheWordsAsItsOwnArguments) {
  shellDoes("printf '%s|' \"$#\" \"$@\"");
  EXPECT_EQ(ask(), "3|dpkg|-s|com.hollowmere.zentrova|");
  const auto records = process.programs().records();
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0].request.path, "/bin/bash");
}

TEST_F(VersionQuery, ReturnsWhenTheProgramHasEnded) {
  shellDoes("printf '1'; exit 3");
  EXPECT_EQ(ask(), "1");
  EXPECT_EQ(process.programs().records().at(0).exitStatus, 3);
}

TEST_F(VersionQuery, SilentProgramGivesAnEmptyText) {
  label->setText("before");
  shellDoes("exit 1");
  EXPECT_EQ(ask(), "");
}

TEST_F(VersionQuery, MissingShellGivesAnEmptyText) {
  label->setText("before");
  EXPECT_EQ(ask(), "");
  EXPECT_EQ(process.programs().records().at(0).startError, ENOENT);
}

TEST_F(VersionQuery, ShellThatIsNoProgramGivesAnEmptyText) {
  process.tree().write(shell, "no program");
  EXPECT_EQ(ask(), "");
}

TEST_F(VersionQuery, StandardErrorIsNotShown) {
  shellDoes("echo 'dpkg: error' >&2; printf '1'");
  testing::internal::CaptureStderr();
  const Text shown = ask();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "dpkg: error\n");
  EXPECT_EQ(shown, "1");
}

TEST_F(VersionQuery, StandardInputIsOurs) {
  process.tree().write("/input", "Version: of the input");
  const int ours = ::dup(STDIN_FILENO);
  const int file = ::open(process.tree().rawHostPath("/input").c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_GE(file, 0);
  ::dup2(file, STDIN_FILENO);
  ::close(file);
  shellDoes("cat");
  const Text shown = ask();
  ::dup2(ours, STDIN_FILENO);
  ::close(ours);
  EXPECT_EQ(shown, "of the input");
}

// The page reads when the pipe is full.
TEST_F(VersionQuery, LongOutputShowsOnlyItsFirstChunk) {
  shellDoes("head -c 70000 /dev/zero | tr '\\0' x");
  whenDataCome([](platform::NSFileHandle& handle) {
    for (int waiting = 0; waiting < pipeSize;) {
      ASSERT_EQ(::ioctl(handle.fileDescriptor(), FIONREAD, &waiting), 0);
    }
  });
  EXPECT_EQ(ask(), std::string(pipeSize, 'x'));
}

// The program continues only after the page has read.
TEST_F(VersionQuery, LaterOutputIsNotRead) {
  shellDoes("printf 'Version: 1\\n'; until [ -e \"$0.go\" ]; do :; done; printf 'Version: 2\\n'");
  whenDataCome([this](platform::NSFileHandle&) {
    process.scheduler().asyncMain([this] { process.tree().write("/bin/bash.go", ""); });
  });
  EXPECT_EQ(ask(), "1\n");
  process.scheduler().advance(10);
  EXPECT_EQ(label->text(), "1\n");
}

TEST_F(VersionQuery, MainQueueGoesOnMeanwhile) {
  shellDoes("until [ -e \"$0.go\" ]; do :; done; printf '1'");
  process.scheduler().asyncMain([this] { process.tree().write("/bin/bash.go", ""); });
  EXPECT_EQ(ask(), "1");
}

TEST_F(VersionQuery, OutputThatIsNoUtf8ClearsTheLabel) {
  for (const char* bytes : {"\\377", "1\\300\\200", "\\355\\240\\200", "1\\342\\202"}) {
    label->setText("before");
    shellDoes(std::string("printf '") + bytes + "'");
    EXPECT_EQ(ask(), std::nullopt) << bytes;
  }
}

TEST_F(VersionQuery, OutputMayHoldAnyCharacter) {
  shellDoes("printf 'Version: 1.0 \\342\\202\\254 \\360\\237\\230\\200 \\000 \\001'");
  EXPECT_EQ(ask(), std::string("1.0 \u20AC \U0001F600 \0 \x01", 16));
}

TEST_F(VersionQuery, UnreadableOutputRaisesNoDataException) {
  shellDoes("printf '1'");
  whenDataCome([](platform::NSFileHandle& handle) {
    const int folder = ::open("/", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ::dup2(folder, handle.fileDescriptor());
    ::close(folder);
  });
  label->setText("before");
  try {
    page->getCurrentVersion();
    FAIL() << "nothing was raised";
  } catch (const platform::Exception& exception) {
    EXPECT_EQ(exception.name(), "NoDataException");
    EXPECT_EQ(exception.reason(), "No data read from stdout");
  }
  EXPECT_EQ(label->text(), "before");
}

TEST_F(VersionQuery, WithoutALabelNothingIsShown) {
  shellDoes("printf '1'");
  page->setVersionLabel(nullptr);
  page->getCurrentVersion();
  EXPECT_EQ(label->text(), std::nullopt);
  EXPECT_EQ(process.programs().records().size(), 1U);
}

TEST_F(VersionQuery, EachQueryAsksAgain) {
  shellDoes("printf '1'");
  EXPECT_EQ(ask(), "1");
  shellDoes("printf '2'");
  EXPECT_EQ(ask(), "2");
}

TEST_F(VersionQuery, IsAskedByName) {
  shellDoes("printf 'Version: 3'");
  page->perform("getCurrentVersion");
  EXPECT_EQ(page->valueForKeyPath("_versionLabel.text"), Value("3"));
}

TEST_F(VersionQuery, LabelIsSetByKey) {
  const auto other = platform::make<UILabel>();
  page->setValueForKey(Value(other), "_versionLabel");
  EXPECT_EQ(page->versionLabel(), other);
  page->setValueForKey({}, "_versionLabel");
  EXPECT_FALSE(page->versionLabel());
}

TEST_F(VersionQuery, LabelGoesWithThePage) {
  const std::weak_ptr<UILabel> weak = label;
  label = nullptr;
  EXPECT_FALSE(weak.expired());
  page = nullptr;
  EXPECT_TRUE(weak.expired());
}

// The page never queries the version by itself.
TEST_F(VersionQuery, NothingIsAskedUntilSomebodyDoes) {
  showPage();
  process.scheduler().advance(10);
  EXPECT_TRUE(process.programs().records().empty());
  EXPECT_FALSE(page->versionLabel());
}

TEST_F(VersionQuery, LeavesNoDescriptorAndNoPageBehind) {
  shellDoes("printf '1'");
  ask();
  const auto before = openDescriptors();
  for (int i = 0; i < 5; ++i) ask();
  EXPECT_EQ(openDescriptors(), before);
  const std::weak_ptr<ZVRRootListController> weak = page;
  page = nullptr;
  EXPECT_TRUE(weak.expired());
}

}  // namespace
}  // namespace zentrova::tests
