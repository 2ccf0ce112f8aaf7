#pragma once

#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/files/FileSystem.h"
#include "platform/foundation/values/Collections.h"
#include "platform/foundation/values/Value.h"

namespace settings {

// "com.example.prefs.plist" for the domain "com.example.prefs".
std::string preferenceFileName(std::string_view domain);
// Its device path.
std::string preferenceFilePath(std::string_view domain);

enum class PreferenceFileState { read, missing, damaged };

struct PreferenceFile {
  PreferenceFileState state = PreferenceFileState::missing;
  platform::Dictionary entries;  // empty unless the file was read
  std::string problem;           // for the user; empty if the file was read
};

// Reads the file as it is now. `path` is a device path.
PreferenceFile readPreferenceFile(platform::FileSystem& device, const std::string& path);

// Returns whether both values give the same file; both may be absent. This differs from equality:
// the boolean true equals the integer 1 but is written differently, and NaN does not equal itself
// but is written the same. Values that no file can contain are compared by equality.
bool isWrittenAlike(const platform::Value& a, const platform::Value& b);

// A key that differs. An absent value is none.
struct PreferenceChange {
  std::string key;
  platform::Value before;
  platform::Value after;
};

// The keys whose written values differ, in key order.
std::vector<PreferenceChange> changesBetween(const platform::Dictionary& before,
                                             const platform::Dictionary& after);
// An object with "key", "before" and "after"; without the member of an absent value.
nlohmann::ordered_json jsonOfChange(const PreferenceChange& change);
// "+ key: value", "- key: value", or both; "  key: value" if it has not changed.
void printChange(std::ostream& output, const PreferenceChange& change);

}  // namespace settings
