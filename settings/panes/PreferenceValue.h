#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/files/FileSystem.h"
#include "platform/foundation/values/Value.h"

namespace settings {

// What the preference file of the device holds under a key, read from the disk.
struct PreferenceLookup {
  std::optional<platform::Value> value;  // empty where there is none
  bool isAbsent = false;                 // there is no file, or a sound one without the key
  std::string problem;                   // why there is none, for people
};
PreferenceLookup lookUpPreference(platform::FileSystem& files, std::string_view key);

// The types that scripts tell apart: integer, real, bool, string, data, array, dict.
bool isPreferenceType(std::string_view type);
std::string preferenceTypeNames();

// Whether the JSON can stand for a value of that type.
bool isOfPreferenceType(std::string_view type, const nlohmann::json& wanted);

// Whether the stored value is of that type and is the one that the JSON stands for. Reals may be
// written as integers; data as {"data": base64} or the base64 text alone.
bool matchesPreference(const platform::Value& stored, std::string_view type,
                       const nlohmann::json& wanted);

// "integer 1"
std::string describePreference(const platform::Value& stored);

}  // namespace settings
