#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/files/FileSystem.h"
#include "platform/foundation/values/Value.h"

namespace settings {

// The value under a key in the preference file of the device, read from disk.
struct PreferenceLookup {
  std::optional<platform::Value> value;  // empty if there is none
  bool isAbsent = false;                 // no file, or a valid file without the key
  std::string problem;                   // why there is no value, for the user
};
PreferenceLookup lookUpPreference(platform::FileSystem& files, std::string_view key);

// The types that scripts distinguish: integer, real, bool, string, data, array, dict.
bool isPreferenceType(std::string_view type);
std::string preferenceTypeNames();

// Returns whether the JSON can represent a value of this type.
bool isOfPreferenceType(std::string_view type, const nlohmann::json& wanted);

// Returns whether the stored value has this type and equals the JSON. A real may be written as an
// integer; data may be written as {"data": base64} or as the base64 text.
bool matchesPreference(const platform::Value& stored, std::string_view type,
                       const nlohmann::json& wanted);

// "integer 1"
std::string describePreference(const platform::Value& stored);

}  // namespace settings
