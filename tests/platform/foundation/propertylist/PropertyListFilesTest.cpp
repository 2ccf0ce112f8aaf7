#include <gtest/gtest.h>

#include "platform/foundation/objects/Object.h"
#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/propertylist/PropertyListBinary.h"
#include "tests/support/TestProcess.h"

namespace platform {
namespace {

class PropertyListFiles : public testing::Test {
 protected:
  PropertyListFiles() { tree().makeFolder("/var/mobile"); }
  test_support::TemporaryDeviceTree& tree() { return _process.tree(); }
  static constexpr std::string_view path = "/var/mobile/a.plist";

 private:
  test_support::TestProcess _process;
};

TEST_F(PropertyListFiles, WhatIsWrittenIsRead) {
  const Dictionary entries{{"a", 1}, {"image", Data(std::string(200'000, 'i'))}};
  std::string problem;
  EXPECT_TRUE(writeToFileAtomically(entries, path, &problem)) << problem;
  EXPECT_EQ(tree().read(path), writeXmlPropertyList(entries).bytes);
  EXPECT_EQ(dictionaryWithContentsOfFile(path, &problem), entries) << problem;
}

TEST_F(PropertyListFiles, ReadsTheBinaryForm) {
  const Dictionary entries{{"a", Array{1, "two"}}};
  tree().write(path, writeBinaryPropertyList(entries).bytes);
  EXPECT_EQ(dictionaryWithContentsOfFile(path), entries);
}

TEST_F(PropertyListFiles, WhatCannotBeReadIsNothingWithAReason) {
  std::string problem;
  EXPECT_EQ(dictionaryWithContentsOfFile("/var/mobile/none.plist", &problem), std::nullopt);
  EXPECT_FALSE(problem.empty());
  EXPECT_EQ(dictionaryWithContentsOfFile("/var/mobile/none.plist"), std::nullopt);
  EXPECT_EQ(dictionaryWithContentsOfFile("/var/mobile", &problem), std::nullopt);
  tree().write(path, "");
  EXPECT_EQ(dictionaryWithContentsOfFile(path, &problem), std::nullopt);
  EXPECT_EQ(problem, "/var/mobile/a.plist: line 1, column 1: there is no property list");
  tree().write(path, "<plist><array/></plist>");
  EXPECT_EQ(dictionaryWithContentsOfFile(path, &problem), std::nullopt);
  EXPECT_EQ(problem, "/var/mobile/a.plist: the root is not a dictionary");
  tree().write(path, "<plist><dict>");
  EXPECT_EQ(dictionaryWithContentsOfFile(path, &problem), std::nullopt);
}

TEST_F(PropertyListFiles, WhatIsNoPropertyListLeavesTheOldFile) {
  ASSERT_TRUE(writeToFileAtomically(Dictionary{{"a", 1}}, path));
  const auto before = tree().read(path);
  std::string problem;
  for (const Value& bad :
       {Value(std::make_shared<Object>()), Value(std::string("\0", 1)), Value("\xED\xA0\x80")}) {
    EXPECT_FALSE(writeToFileAtomically(Dictionary{{"bad", bad}}, path, &problem));
    EXPECT_EQ(problem.find("/var/mobile/a.plist: not a property list: bad: "), 0U) << problem;
    EXPECT_EQ(tree().read(path), before);
  }
}

TEST_F(PropertyListFiles, AFolderThatIsMissingIsAProblem) {
  std::string problem;
  EXPECT_FALSE(writeToFileAtomically(Dictionary{{"a", 1}}, "/nowhere/a.plist", &problem));
  EXPECT_FALSE(problem.empty());
}

}  // namespace
}  // namespace platform
