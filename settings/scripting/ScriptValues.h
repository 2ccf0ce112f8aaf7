#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "platform/foundation/values/Value.h"
#include "settings/device/PropertyListJson.h"

namespace settings {

struct ScriptJson {
  nlohmann::json value;
  std::string problem;  // for people; empty where there is none
};

// JSON as a line of a script holds it; nothing that nests deeper than a property list may.
ScriptJson jsonOfText(std::string_view text);

// The value that the JSON stands for; none for null.
PropertyListFromJson valueOrNone(const nlohmann::json& json);

// A result for people: a text as it is, "(null)" for none, an object as it describes itself,
// anything else as JSON on one line.
std::string plainText(const platform::Value& value);

}  // namespace settings
