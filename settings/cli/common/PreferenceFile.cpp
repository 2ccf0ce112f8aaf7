#include "settings/cli/common/PreferenceFile.h"

#include <cerrno>
#include <nlohmann/json.hpp>
#include <ostream>
#include <utility>

#include "platform/foundation/propertylist/PropertyList.h"
#include "settings/cli/common/PlistInput.h"
#include "settings/device/DevicePaths.h"
#include "settings/device/JsonText.h"
#include "settings/device/PropertyListJson.h"

namespace settings {

bool isWrittenAlike(const platform::Value& a, const platform::Value& b) {
  const platform::PropertyListText first = platform::writeXmlPropertyList(a);
  const platform::PropertyListText second = platform::writeXmlPropertyList(b);
  if (first.error || second.error) return a.kind() == b.kind() && a == b;
  return first.bytes == second.bytes;
}

std::string preferenceFileName(std::string_view domain) {
  return std::string(domain) + ".plist";
}

std::string preferenceFilePath(std::string_view domain) {
  return std::string(preferencesPath) + "/" + preferenceFileName(domain);
}

PreferenceFile readPreferenceFile(platform::FileSystem& device, const std::string& path) {
  PreferenceFile file;
  const platform::FileContents contents = device.read(path);
  // A broken link counts as existing: a change would replace it with a file.
  if (contents.error.code == ENOENT && !device.attributesOfItem(path)) {
    file.problem = "there is no file " + path;
    return file;
  }
  file.state = PreferenceFileState::damaged;
  if (contents.error) {
    file.problem = contents.error.message;
    return file;
  }
  platform::PropertyListResult read = platform::readPropertyList(contents.bytes);
  if (read.error) {
    file.problem = refusalLine(path, *read.error);
  } else if (const platform::Dictionary* root = read.value.asDictionary()) {
    file.entries = *root;
    file.state = PreferenceFileState::read;
  } else {
    file.problem = path + ": the root of a preference file must be a dictionary, but is " +
                   outlineText(read.value);
  }
  return file;
}

std::vector<PreferenceChange> changesBetween(const platform::Dictionary& before,
                                             const platform::Dictionary& after) {
  std::vector<PreferenceChange> changes;
  // Both are sorted by key, so a merged dictionary has the keys in order.
  platform::Dictionary keys = before;
  for (const auto& [key, value] : after) keys = std::move(keys).with(key, value);
  for (const auto& [key, value] : keys) {
    PreferenceChange change{std::string(key), before.valueForKey(key), after.valueForKey(key)};
    if (!isWrittenAlike(change.before, change.after)) changes.push_back(std::move(change));
  }
  return changes;
}

nlohmann::ordered_json jsonOfChange(const PreferenceChange& change) {
  nlohmann::ordered_json json = {{"key", change.key}};
  if (change.before) json["before"] = jsonFromValue(change.before);
  if (change.after) json["after"] = jsonFromValue(change.after);
  return json;
}

void printChange(std::ostream& output, const PreferenceChange& change) {
  const auto print = [&](char sign, const platform::Value& value) {
    if (value.isNone()) return;
    const bool isContainer = value.asArray() != nullptr || value.asDictionary() != nullptr;
    output << sign << ' ' << change.key << ": "
           << (isContainer ? jsonText(jsonFromValue(value)) : outlineText(value)) << '\n';
  };
  if (isWrittenAlike(change.before, change.after)) return print(' ', change.after);
  print('-', change.before);
  print('+', change.after);
}

}  // namespace settings
