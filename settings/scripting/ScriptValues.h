#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "platform/foundation/values/Value.h"

namespace settings {

struct ScriptJson {
  nlohmann::json value;
  std::string problem;  // for people; empty where there is none
};

// JSON as a line of a script holds it; nothing that nests deeper than a property list may.
ScriptJson jsonOfText(std::string_view text);

struct PropertyListBytes {
  std::string bytes;
  std::string problem;  // for people; empty where there is none
};

// JSON (docs: data, dates and unusual reals are maps of one entry) as the XML form of a property
// list.
PropertyListBytes propertyListBytes(const nlohmann::json& json);

struct ScriptValue {
  platform::Value value;
  std::string problem;  // for people; empty where there is none
};

ScriptValue valueOfJson(const nlohmann::json& json);

// Any value as JSON: what a property list can hold as everywhere, another object as its
// description, none as null.
nlohmann::json jsonOfValue(const platform::Value& value);

// The JSON as text, on one line or indented; what is no valid UTF-8 in it (a lone surrogate) is
// shown as U+FFFD.
std::string jsonText(const nlohmann::json& json, int indent = -1);

// A result for people: a text as it is, "(null)" for none, an object as it describes itself,
// anything else as JSON on one line.
std::string plainText(const platform::Value& value);

}  // namespace settings
