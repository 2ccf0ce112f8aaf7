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

// "com.example.prefs.plist" of the domain "com.example.prefs".
std::string preferenceFileName(std::string_view domain);
// Its path on the device.
std::string preferenceFilePath(std::string_view domain);

enum class PreferenceFileState { read, missing, damaged };

struct PreferenceFile {
  PreferenceFileState state = PreferenceFileState::missing;
  platform::Dictionary entries;  // empty unless the file was read
  std::string problem;           // for people, where it was not
};

// The file as it is now. `path` is the device's.
PreferenceFile readPreferenceFile(platform::FileSystem& device, const std::string& path);

// Whether a file is the same with either; both may be none. Equal values may differ there: a
// boolean true equals the integer 1. And a NaN is written alike, yet equals nothing. What no file
// can hold is alike where it is equal.
bool isWrittenAlike(const platform::Value& a, const platform::Value& b);

// One key that differs. None where it is absent.
struct PreferenceChange {
  std::string key;
  platform::Value before;
  platform::Value after;
};

// The keys whose values are not written alike, in the keys' order.
std::vector<PreferenceChange> changesBetween(const platform::Dictionary& before,
                                             const platform::Dictionary& after);
// As an object of "key", "before" and "after"; an absent value's member is left out.
nlohmann::ordered_json jsonOfChange(const PreferenceChange& change);
// "+ key: value", "- key: value", or both; "  key: value" where it is the same as before.
void printChange(std::ostream& output, const PreferenceChange& change);

}  // namespace settings
