#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/values/Collections.h"
#include "prefs/HBPreferences.h"
#include "tests/support/TestProcess.h"

namespace zentrova::tests {

// A process with an empty preference folder.
class StoreTest : public testing::Test {
 protected:
  static constexpr std::string_view path = test_support::TestProcess::preferencePath;

  std::shared_ptr<HBPreferences> makeStore() {
    return HBPreferences::preferencesForIdentifier(preferencesDomain);
  }
  // A store over a file with that one value under "key".
  std::shared_ptr<HBPreferences> storeWith(const platform::Value& value) {
    writeFile(platform::Dictionary{{"key", value}});
    return makeStore();
  }
  void writeFile(const platform::Dictionary& content) {
    process.tree().write(path, platform::writeXmlPropertyList(content).bytes);
  }
  // The content of the file; empty if there is no readable file.
  std::optional<platform::Dictionary> fileContent() {
    return platform::dictionaryWithContentsOfFile(path);
  }
  platform::Value inFile(std::string_view key) {
    const auto content = fileContent();
    return content ? content->valueForKey(key) : platform::Value();
  }

  test_support::TestProcess process;
};

}  // namespace zentrova::tests
