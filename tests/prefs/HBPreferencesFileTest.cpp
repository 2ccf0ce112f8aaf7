#include <cerrno>
#include <gtest/gtest.h>

#include "platform/foundation/propertylist/PropertyListBinary.h"
#include "tests/prefs/StoreFixture.h"

namespace zentrova::tests {
namespace {

using platform::Dictionary;
using platform::Value;

// An unreadable file silently gives an empty store; the first write replaces the file.
class HBPreferencesFile : public StoreTest {
 protected:
  void expectEmptyStoreThatWrites() {
    const auto store = makeStore();
    EXPECT_EQ(store->dictRep()->count(), 0U);
    EXPECT_TRUE(process.log().entries().empty());
    store->setObject(1, "key");
    EXPECT_EQ(fileContent(), (Dictionary{{"key", 1}}));
  }
  void expectEmptyStoreThatCannotWrite() {
    const auto store = makeStore();
    EXPECT_EQ(store->dictRep()->count(), 0U);
    store->setObject(1, "key");
    EXPECT_EQ(store->integerForKey("key"), 1);
    EXPECT_EQ(fileContent(), std::nullopt);
  }
  std::string xml(std::string_view root) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" +
           std::string(root) + "</plist>\n";
  }
};

TEST_F(HBPreferencesFile, Missing) {
  expectEmptyStoreThatWrites();
}

TEST_F(HBPreferencesFile, Empty) {
  process.tree().write(path, "");
  expectEmptyStoreThatWrites();
}

TEST_F(HBPreferencesFile, Truncated) {
  const auto whole = platform::writeXmlPropertyList(Dictionary{{"key", "value"}}).bytes;
  for (std::size_t size = 1; size + sizeof("</plist>\n") <= whole.size(); size += 7) {
    process.tree().write(path, whole.substr(0, size));
    EXPECT_EQ(makeStore()->dictRep()->count(), 0U) << size;
  }
  expectEmptyStoreThatWrites();
}

TEST_F(HBPreferencesFile, NoPropertyList) {
  process.tree().write(path, "gesturesConfig: 0\n\x80\xFF");
  expectEmptyStoreThatWrites();
}

TEST_F(HBPreferencesFile, TruncatedBinaryForm) {
  const auto whole = platform::writeBinaryPropertyList(Dictionary{{"key", "value"}}).bytes;
  process.tree().write(path, whole.substr(0, whole.size() - 5));
  expectEmptyStoreThatWrites();
}

TEST_F(HBPreferencesFile, OtherRoot) {
  for (const char* root :
       {"<array/>", "<string>text</string>", "<integer>1</integer>", "<true/>"}) {
    process.tree().write(path, xml(root));
    EXPECT_EQ(makeStore()->dictRep()->count(), 0U) << root;
  }
  expectEmptyStoreThatWrites();
}

TEST_F(HBPreferencesFile, Unreadable) {
  writeFile(Dictionary{{"key", "value"}});
  process.systemCalls().fail("read", 5);
  const auto store = makeStore();
  process.systemCalls().clear();
  EXPECT_EQ(store->dictRep()->count(), 0U);
  store->setObject(1, "other");
  EXPECT_EQ(fileContent(), (Dictionary{{"other", 1}}));
}

// The superuser can read every file, so the system call itself fails.
TEST_F(HBPreferencesFile, WithoutPermission) {
  writeFile(Dictionary{{"key", "value"}});
  for (const char* call : {"openat", "openat2"}) {
    process.systemCalls().fail(call, EACCES, test_support::FaultySystemCalls::always);
  }
  const auto store = makeStore();
  EXPECT_EQ(store->dictRep()->count(), 0U);
  store->setObject(1, "other");
  process.systemCalls().clear();
  EXPECT_EQ(fileContent(), (Dictionary{{"key", "value"}}));
}

TEST_F(HBPreferencesFile, Folder) {
  process.tree().makeFolder(path);
  expectEmptyStoreThatCannotWrite();
}

TEST_F(HBPreferencesFile, LinkCircle) {
  process.tree().link(path, "/var/jb/var/mobile/Library/Preferences/other.plist");
  process.tree().link("/var/jb/var/mobile/Library/Preferences/other.plist", path);
  expectEmptyStoreThatWrites();
}

TEST_F(HBPreferencesFile, FolderIsALinkInACircle) {
  process.tree().remove("/var/jb");
  process.tree().link("/var/jb", "/var/jb");
  expectEmptyStoreThatCannotWrite();
}

// --- Files that can be read ---

TEST_F(HBPreferencesFile, BinaryFormIsReadAndXmlIsWritten) {
  process.tree().write(path, platform::writeBinaryPropertyList(Dictionary{{"key", 5}}).bytes);
  const auto store = makeStore();
  EXPECT_EQ(store->integerForKey("key"), 5);
  store->setObject(6, "key");
  EXPECT_TRUE(process.tree().read(path)->starts_with("<?xml"));
  EXPECT_EQ(inFile("key"), Value(6));
}

TEST_F(HBPreferencesFile, LinkToAFileIsReadAndReplacedOnWriting) {
  const std::string target = "/var/jb/var/mobile/Library/target.plist";
  process.tree().write(target, platform::writeXmlPropertyList(Dictionary{{"key", 5}}).bytes);
  process.tree().link(path, target);
  const auto store = makeStore();
  EXPECT_EQ(store->integerForKey("key"), 5);
  store->setObject(6, "key");
  EXPECT_EQ(inFile("key"), Value(6));
  EXPECT_EQ(platform::dictionaryWithContentsOfFile(target), (Dictionary{{"key", 5}}));
}

TEST_F(HBPreferencesFile, PermissionsOfTheFileAreKept) {
  writeFile(Dictionary{{"key", 1}});
  process.tree().setMode(path, 0640);
  makeStore()->setObject(2, "key");
  EXPECT_EQ(process.files().attributesOfItem(path)->mode & 0777U, 0640U);
}

// The folder is fixed: the destination of "/var/jb" does not change the path that is written.
TEST_F(HBPreferencesFile, IsFoundThroughTheLink) {
  process.tree().remove("/var/jb");
  process.tree().link("/var/jb", "/elsewhere");
  process.tree().makeFolder("/elsewhere/var/mobile/Library/Preferences");
  makeStore()->setObject(1, "key");
  EXPECT_TRUE(process.tree().exists(
      "/elsewhere/var/mobile/Library/Preferences/com.hollowmere.zentrovaprefs.plist"));
}

}  // namespace
}  // namespace zentrova::tests
