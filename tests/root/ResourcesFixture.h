#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "tests/root/RootFixture.h"

namespace zentrova::tests {

// The shipped lists.
class ResourcesTest : public RootTest {
 protected:
  using Dictionary = platform::Dictionary;
  using Value = platform::Value;
  static constexpr std::array rootLists{"Root.plist", "Vibration.plist"};
  static constexpr std::array appearanceLists{"Customize.plist", "GlobalColors.plist",
                                              "LightColors.plist", "DarkColors.plist"};
  // All lists.
  static std::vector<std::string> lists() {
    std::vector<std::string> names(rootLists.begin(), rootLists.end());
    names.insert(names.end(), appearanceLists.begin(), appearanceLists.end());
    return names;
  }

  void SetUp() override {
    writeSource("Info.plist");
    for (const std::string& name : lists()) writeSource(name);
  }
  void writeSource(const std::string& name) {
    process.tree().write(std::string(bundle) + "/" + name, source(name));
  }
  // The text of a file of the bundle, from the sources.
  static std::string source(const std::string& name);
  static Dictionary list(const std::string& name) {
    const auto result = platform::readPropertyList(source(name));
    EXPECT_FALSE(result.error) << name << ": " << result.error->text();
    return *result.value.asDictionary();
  }
  static std::vector<Dictionary> items(const std::string& name) {
    const Value entries = list(name).valueForKey("items");
    std::vector<Dictionary> result;
    for (const Value& entry : *entries.asArray()) result.push_back(*entry.asDictionary());
    return result;
  }
};

}  // namespace zentrova::tests
