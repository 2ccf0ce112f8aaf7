#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/values/Value.h"

// Conversion between property lists and JSON. Data is {"data": "<base64>"}, a date is {"date":
// "2026-01-02T03:04:05Z"}, a real always has a point or an exponent, and a real that is not finite
// is {"real": "nan"}, {"real": "+infinity"} or {"real": "-infinity"}. Integers, strings, booleans,
// arrays and dictionaries map to their JSON types. A dictionary that could be mistaken for one of
// these objects is wrapped as {"dictionary": {...}}. Threads: any.
namespace settings {

// The value that the JSON stands for, or an error.
struct PropertyListFromJson {
  platform::Value value;  // none if there is an error
  std::optional<std::string> error;
  explicit operator bool() const noexcept { return !error; }
};

// Converts a value to JSON. No value becomes null; an object of another kind becomes its
// description. Lone surrogates and bytes that are not UTF-8 become U+FFFD.
nlohmann::ordered_json jsonFromValue(const platform::Value& value);

// Converts JSON to a value. Rejects null, nesting deeper than 512 levels, an integer outside -2^63
// to 2^64-1, and an object whose only key is "data", "date" or "real" and whose text does not have
// the form above.
PropertyListFromJson valueFromJson(const nlohmann::json& json);
PropertyListFromJson valueFromJson(const nlohmann::ordered_json& json);

// Parses the text first. A syntax error reports the byte offset.
PropertyListFromJson valueFromJsonText(std::string_view text);

}  // namespace settings
