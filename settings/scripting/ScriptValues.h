#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "platform/foundation/values/Value.h"
#include "settings/device/PropertyListJson.h"

namespace settings {

struct ScriptJson {
  nlohmann::json value;
  std::string problem;  // for the user; empty if there is a value
};

// Parses JSON from a line of a script. Fails if it is nested deeper than a property list may be.
ScriptJson jsonOfText(std::string_view text);

// The value that the JSON stands for; no value for null.
PropertyListFromJson valueOrNone(const nlohmann::json& json);

// A result as text: strings as they are, "(null)" for no value, an object's description, and
// anything else as JSON on one line.
std::string plainText(const platform::Value& value);

}  // namespace settings
