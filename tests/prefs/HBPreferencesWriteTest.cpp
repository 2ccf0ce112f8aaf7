#include <array>
#include <cstdio>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include "platform/foundation/propertylist/PropertyListBinary.h"
#include "platform/foundation/values/Exception.h"
#include "tests/prefs/StoreFixture.h"

namespace zentrova::tests {
namespace {

using platform::Array;
using platform::Dictionary;
using platform::Exception;
using platform::Value;

class HBPreferencesWrite : public StoreTest {};

std::string nameOfException(const std::function<void()>& work) {
  try {
    work();
  } catch (const Exception& exception) {
    return exception.name();
  }
  return "none";
}

TEST_F(HBPreferencesWrite, IdentifierNamesTheFile) {
  EXPECT_EQ(HBPreferences::filePathForIdentifier("com.hollowmere.zentrovaprefs"),
            "/var/jb/var/mobile/Library/Preferences/com.hollowmere.zentrovaprefs.plist");
  const auto store = HBPreferences::preferencesForIdentifier("com.example.other");
  EXPECT_EQ(store->identifier_rl(), "com.example.other");
  store->setObject(1, "key");
  EXPECT_TRUE(
      process.tree().exists("/var/jb/var/mobile/Library/Preferences/com.example.other.plist"));
  EXPECT_FALSE(process.tree().exists(path));
}

// When the operation returns, the file holds the whole dictionary in the platform's form.
TEST_F(HBPreferencesWrite, SetObjectWritesTheWholeFileAtOnce) {
  writeFile(Dictionary{{"kept", "as it was"}});
  const auto store = makeStore();
  store->setObject(true, "switch");
  EXPECT_EQ(process.tree().read(path),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
            "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
            "<plist version=\"1.0\">\n<dict>\n\t<key>kept</key>\n\t<string>as it was</string>\n"
            "\t<key>switch</key>\n\t<true/>\n</dict>\n</plist>\n");
}

TEST_F(HBPreferencesWrite, UnderscoredSetObjectIsTheSameOperation) {
  makeStore()->_setObject("#FA0000:0.0", "color");
  EXPECT_EQ(inFile("color"), Value("#FA0000:0.0"));
}

TEST_F(HBPreferencesWrite, EveryChangeIsOneWrite) {
  const auto store = makeStore();
  const auto renames = [&] { return process.systemCalls().count("renameat"); };
  const auto before = renames();
  store->setObject(1, "a");
  EXPECT_EQ(renames(), before + 1);
  store->setObject(1, "a");
  EXPECT_EQ(renames(), before + 2);
  store->removeObjectForKey("a");
  EXPECT_EQ(renames(), before + 3);
  store->objectForKey("a");
  EXPECT_EQ(renames(), before + 3);
}

TEST_F(HBPreferencesWrite, SettingNoneRemovesTheKeyAndWrites) {
  const auto store = storeWith("value");
  store->setObject(nullptr, "key");
  EXPECT_TRUE(store->objectForKey("key").isNone());
  EXPECT_EQ(fileContent(), Dictionary());
}

TEST_F(HBPreferencesWrite, RemovingAnAbsentKeyMakesTheFile) {
  const auto store = makeStore();
  ASSERT_FALSE(process.tree().exists(path));
  store->removeObjectForKey("absent");
  EXPECT_EQ(fileContent(), Dictionary());
}

TEST_F(HBPreferencesWrite, RemovingAKeyLeavesTheOthers) {
  writeFile(Dictionary{{"a", 1}, {"b", 2}});
  makeStore()->removeObjectForKey("a");
  EXPECT_EQ(fileContent(), (Dictionary{{"b", 2}}));
}

// Each store has the content that the file had when the store was made; the last write wins.
TEST_F(HBPreferencesWrite, TwoStoresDoNotSeeEachOther) {
  writeFile(Dictionary{{"shared", 1}});
  const auto first = makeStore();
  const auto second = makeStore();
  EXPECT_NE(first, second);
  first->setObject("first", "a");
  EXPECT_TRUE(second->objectForKey("a").isNone());
  second->setObject("second", "b");
  EXPECT_EQ(fileContent(), (Dictionary{{"b", "second"}, {"shared", 1}}));
  EXPECT_EQ(first->objectForKey("a"), Value("first"));
  first->removeObjectForKey("absent");
  EXPECT_EQ(fileContent(), (Dictionary{{"a", "first"}, {"shared", 1}}));
}

TEST_F(HBPreferencesWrite, FileChangedFromOutsideIsNotReadAgain) {
  const auto store = storeWith(1);
  writeFile(Dictionary{{"key", 2}});
  EXPECT_EQ(store->integerForKey("key"), 1);
}

TEST_F(HBPreferencesWrite, NoneKeyRaisesAndWritesNothing) {
  const auto store = makeStore();
  EXPECT_EQ(nameOfException([&] { store->setObject(1, nullptr); }), "NSInvalidArgumentException");
  EXPECT_EQ(nameOfException([&] { store->removeObjectForKey(nullptr); }),
            "NSInvalidArgumentException");
  EXPECT_FALSE(process.tree().exists(path));
}

TEST_F(HBPreferencesWrite, KeyThatIsNoTextRaises) {
  const auto store = makeStore();
  EXPECT_EQ(nameOfException([&] { store->setObject(1, 5); }), "NSInvalidArgumentException");
  EXPECT_EQ(nameOfException([&] { store->objectForKey(Array{"a"}); }),
            "NSInvalidArgumentException");
}

// --- A failed write is ignored: the change stays in memory, the old file is unchanged. ---

TEST_F(HBPreferencesWrite, MissingFolderIsIgnored) {
  process.tree().remove("/var/jb/var/mobile/Library/Preferences");
  const auto store = makeStore();
  store->setObject(1, "key");
  EXPECT_EQ(store->integerForKey("key"), 1);
  EXPECT_FALSE(process.tree().exists("/var/jb/var/mobile/Library/Preferences"));
}

TEST_F(HBPreferencesWrite, ObjectThatNoPropertyListHoldsIsIgnored) {
  const auto store = storeWith("before");
  const auto object = platform::make<HBPreferences>();
  store->setObject(object, "object");
  EXPECT_EQ(store->objectForKey("object").asObject(), object);
  EXPECT_EQ(fileContent(), (Dictionary{{"key", "before"}}));
  // Later writes fail too, until the value is removed.
  store->setObject("after", "key");
  EXPECT_EQ(inFile("key"), Value("before"));
  store->removeObjectForKey("object");
  EXPECT_EQ(fileContent(), (Dictionary{{"key", "after"}}));
}

TEST_F(HBPreferencesWrite, TextThatNoPropertyListHoldsIsIgnored) {
  const auto store = storeWith("before");
  store->setObject(std::string_view("a\0b", 3), "key");
  EXPECT_EQ(inFile("key"), Value("before"));
  EXPECT_EQ(store->stringForKey("key"), std::string("a\0b", 3));
}

// The binary form can hold values that the XML form cannot. The file is written as XML.
TEST_F(HBPreferencesWrite, ValueOfABinaryFileThatXmlCannotHoldKeepsTheFileUntilItIsGone) {
  const Dictionary content{{"key", "before"}, {"odd", "\x01"}};
  process.tree().write(path, platform::writeBinaryPropertyList(content).bytes);
  const auto store = makeStore();
  EXPECT_EQ(store->stringForKey("odd"), "\x01");
  store->setObject("after", "key");
  EXPECT_EQ(store->stringForKey("key"), "after");
  EXPECT_EQ(fileContent(), content);
  store->removeObjectForKey("odd");
  EXPECT_EQ(fileContent(), (Dictionary{{"key", "after"}}));
}

// Every written file can be read again: nothing that the reader rejects replaces a good file.
TEST_F(HBPreferencesWrite, ValueThatTheReaderWouldRefuseAsTooDeepLeavesTheFile) {
  const auto store = storeWith("before");
  Value nested = Array{};
  for (int i = 0; i < 511; ++i) nested = Array{nested};
  store->setObject(nested, "deep");
  EXPECT_EQ(fileContent(), (Dictionary{{"key", "before"}}));
  store->setObject((*nested.asArray())[0], "deep");
  EXPECT_EQ(inFile("deep"), (*nested.asArray())[0]);
}

TEST_F(HBPreferencesWrite, FullDiskLeavesTheOldFileAndNoOther) {
  const auto store = storeWith("before");
  process.systemCalls().fail("writev", 28);
  store->setObject("after", "key");
  process.systemCalls().clear();
  EXPECT_EQ(inFile("key"), Value("before"));
  EXPECT_EQ(process.files().contentsOfDirectory("/var/jb/var/mobile/Library/Preferences")->size(),
            1U);
  store->setObject("again", "other");
  EXPECT_EQ(fileContent(), (Dictionary{{"key", "after"}, {"other", "again"}}));
}

// --- The properties ---

TEST_F(HBPreferencesWrite, NewIdentifierMovesTheNextWrite) {
  const auto store = storeWith(1);
  store->setIdentifier_rl("com.example.moved");
  store->setObject(2, "key");
  EXPECT_EQ(inFile("key"), Value(1));
  EXPECT_EQ(HBPreferences::preferencesForIdentifier("com.example.moved")->integerForKey("key"), 2);
}

TEST_F(HBPreferencesWrite, DictRepIsTheDictionaryThatIsWritten) {
  const auto store = makeStore();
  store->dictRep()->setValueForKey(Value("unseen"), Value("a"));
  EXPECT_FALSE(process.tree().exists(path));
  store->setObject("b", "b");
  EXPECT_EQ(fileContent(), (Dictionary{{"a", "unseen"}, {"b", "b"}}));
}

// A message to none returns none and does nothing.
TEST_F(HBPreferencesWrite, StoreWithoutDictionaryAnswersNothing) {
  const auto store = storeWith(1);
  store->setDictRep(nullptr);
  EXPECT_TRUE(store->objectForKey("key").isNone());
  store->setObject(2, "key");
  store->removeObjectForKey("key");
  EXPECT_EQ(inFile("key"), Value(1));
}

TEST_F(HBPreferencesWrite, IdentifierThatIsNoneIsFormattedAsThePlatformDoes) {
  const auto store = HBPreferences::preferencesForIdentifier(std::nullopt);
  store->setObject(1, "key");
  EXPECT_TRUE(process.tree().exists("/var/jb/var/mobile/Library/Preferences/(null).plist"));
}

// Other programs read the file, so another property list reader must see the same values.
TEST_F(HBPreferencesWrite, PythonReadsWhatWasWritten) {
  const auto store = makeStore();
  store->setObject(5000000000, "integer");
  store->setObject(Value::single(0.1F), "single");
  store->setObject(false, "off");
  store->setObject("<\"Lower\" & 'Both'>\n\xC3\xA4", "text");
  store->setObject(Array{"a", Array{}, Dictionary{}}, "list");
  store->setObject(platform::Data(std::string_view("\x00\xFF", 2)), "data");
  const auto host = process.files().hostPath(path);
  ASSERT_TRUE(host);
  const std::string command =
      "python3 -c 'import plistlib, sys; d = plistlib.load(open(sys.argv[1], \"rb\")); "
      "print(sorted(d.items()))' '" +
      *host + "'";
  FILE* output = ::popen(command.c_str(), "r");
  ASSERT_NE(output, nullptr);
  std::array<char, 1024> text{};
  const auto size = std::fread(text.data(), 1, text.size(), output);
  ASSERT_EQ(::pclose(output), 0);
  EXPECT_EQ(std::string(text.data(), size),
            "[('data', b'\\x00\\xff'), ('integer', 5000000000), ('list', ['a', [], {}]), "
            "('off', False), ('single', 0.10000000149011612), "
            "('text', '<\"Lower\" & \\'Both\\'>\\n\xC3\xA4')]\n");
}

}  // namespace
}  // namespace zentrova::tests
