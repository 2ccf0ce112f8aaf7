#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <limits>
#include <sys/wait.h>

#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/propertylist/PropertyListBinary.h"
#include "tests/support/TemporaryDeviceTree.h"

// Checks how other programs read the files that are written here.
namespace platform {
namespace {

struct Outcome {
  int status = -1;
  std::string output;
};

Outcome outcomeOf(const std::string& command) {
  Outcome result;
  FILE* pipe = popen(command.c_str(), "r");  // NOLINT(cert-env33-c)
  if (pipe == nullptr) return result;
  char buffer[4096];
  std::size_t size = 0;
  while ((size = fread(buffer, 1, sizeof buffer, pipe)) > 0) result.output.append(buffer, size);
  const int status = pclose(pipe);
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return result;
}

class PropertyListPeers : public testing::Test {
 protected:
  // One value of every kind, and common edge cases.
  static Dictionary everything() {
    return {{"array", Array{1, "two", Array{}, Dictionary{}}},
            {"caf\xC3\xA9 \xF0\x9F\x98\x80", "\xE2\x82\xAC < > & \" '"},
            {"data", Data(std::string(500, '\xAB'))},
            {"date", Date{730943999}},
            {"empty data", Data()},
            {"empty text", ""},
            {"false", false},
            {"highest", std::numeric_limits<std::uint64_t>::max()},
            {"lines", " a\n\tb "},
            {"lowest", std::numeric_limits<std::int64_t>::min()},
            {"nested", Dictionary{{"deep", Array{Dictionary{{"data", Data("x")}}}}}},
            {"real", 0.1},
            {"true", true},
            {"whole real", 3.0},
            {"zero", 0.0}};
  }
  std::string write(const std::string& name, const std::string& bytes) {
    _tree.write("/" + name, bytes);
    return _tree.root() + "/" + name;
  }
  std::string pathOf(const std::string& name) const { return _tree.root() + "/" + name; }

 private:
  test_support::TemporaryDeviceTree _tree{test_support::TemporaryDeviceTree::Contents::empty};
};

constexpr const char* expectedOfPython =
    "import plistlib, sys, datetime\n"
    "with open(sys.argv[1], 'rb') as f: p = plistlib.load(f)\n"
    "e = {'array': [1, 'two', [], {}], 'caf\\u00e9 \\U0001f600': '\\u20ac < > & \" \\'',\n"
    " 'data': b'\\xab' * 500, 'date': datetime.datetime(2024, 2, 29, 23, 59, 59),\n"
    " 'empty data': b'', 'empty text': '', 'false': False, 'highest': 2**64 - 1,\n"
    " 'lines': ' a\\n\\tb ', 'lowest': -2**63, 'nested': {'deep': [{'data': b'x'}]},\n"
    " 'real': 0.1, 'true': True, 'whole real': 3.0, 'zero': 0.0}\n"
    "assert p == e, p\n"
    "assert [type(p[k]) for k in p] == [type(e[k]) for k in p], p\n"
    "assert list(p) == sorted(e, key=lambda k: k.encode('utf-16-be')) or sys.argv[2] == 'binary'\n"
    "print('as expected')\n";

TEST_F(PropertyListPeers, PythonReadsWhatIsWritten) {
  if (outcomeOf("python3 -c 'import plistlib' 2>&1").status != 0)
    GTEST_SKIP() << "python3 is missing";
  const std::string script = write("check.py", expectedOfPython);
  const std::string xml = write("all.plist", writeXmlPropertyList(everything()).bytes);
  const std::string binary = write("all.bin", writeBinaryPropertyList(everything()).bytes);
  for (const auto& [path, form] : {std::pair(xml, "xml"), std::pair(binary, "binary")}) {
    const Outcome result = outcomeOf("python3 " + script + " " + path + " " + form + " 2>&1");
    EXPECT_EQ(result.output, "as expected\n");
  }
}

TEST_F(PropertyListPeers, WhatPythonWritesIsReadAndIsOurOwnForm) {
  if (outcomeOf("python3 -c 'import plistlib' 2>&1").status != 0)
    GTEST_SKIP() << "python3 is missing";
  Dictionary entries = everything();
  // The only difference between the forms is how reals are printed.
  for (const char* key : {"real", "whole real"}) entries = std::move(entries).without(key);
  const std::string path = write("ours.plist", writeXmlPropertyList(entries).bytes);
  const std::string script =
      write("again.py",
            "import plistlib, sys\n"
            "with open(sys.argv[1], 'rb') as f: p = plistlib.load(f)\n"
            "for name, form in (('xml', plistlib.FMT_XML), ('bin', plistlib.FMT_BINARY)):\n"
            "  with open(sys.argv[1] + '.' + name, 'wb') as f: plistlib.dump(p, f, fmt=form)\n");
  ASSERT_EQ(outcomeOf("python3 " + script + " " + path + " 2>&1").output, "");
  const auto contents = [](const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  };
  EXPECT_EQ(contents(path + ".xml"), writeXmlPropertyList(entries).bytes);
  const PropertyListResult back = readPropertyList(contents(path + ".bin"));
  ASSERT_FALSE(back.error) << back.error->text();
  EXPECT_EQ(back.value, Value(entries));
}

TEST_F(PropertyListPeers, PlistutilReadsWhatIsWritten) {
  if (outcomeOf("command -v plistutil").status != 0) {
    GTEST_SKIP() << "plistutil is missing (package libplist-utils)";
  }
  // plistutil stores integers from 2^63 in a different way.
  const Dictionary entries = everything().without("highest");
  const std::string xml = write("all.plist", writeXmlPropertyList(entries).bytes);
  const std::string converted = pathOf("converted.bin");
  ASSERT_EQ(outcomeOf("plistutil -i " + xml + " -f bin -o " + converted + " 2>&1").status, 0);
  std::ifstream file(converted, std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(file), {});
  const PropertyListResult back = readPropertyList(bytes);
  ASSERT_FALSE(back.error) << back.error->text();
  for (const auto& [key, value] : entries) {
    const Value* found = back.value.asDictionary()->find(key);
    ASSERT_NE(found, nullptr) << key;
    EXPECT_EQ(*found, value) << key << ": " << found->description();
  }
  const std::string binary = write("all.bin", writeBinaryPropertyList(entries).bytes);
  EXPECT_EQ(
      outcomeOf("plistutil -i " + binary + " -f xml -o " + pathOf("converted.plist") + " 2>&1")
          .status,
      0);
}

}  // namespace
}  // namespace platform
