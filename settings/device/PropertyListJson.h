#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/values/Value.h"

// Property lists as JSON, for people and scripts. Data is {"data": "<base64>"}, a date
// {"date": "2026-01-02T03:04:05Z"}, a real always has a point or an exponent, and one that is not
// finite is {"real": "nan"}, {"real": "+infinity"} or {"real": "-infinity"}. Integers, strings,
// booleans, lists and objects are themselves. A dictionary that would be mistaken for one of these
// stands in {"dictionary": {...}}. Every function may be called from any thread.
namespace settings {

// What the JSON of a property list comes to, or why it is none.
struct PropertyListFromJson {
  platform::Value value;  // none where there is an error
  std::optional<std::string> error;
  explicit operator bool() const noexcept { return !error; }
};

// The JSON of a value; null where the value is none, the description of another object. A lone
// surrogate and bytes that are no UTF-8 become U+FFFD.
nlohmann::ordered_json jsonFromValue(const platform::Value& value);

// The value that the JSON stands for. Refused: null, a list or an object that is nested more than
// 512 deep, a number outside -2^63 to 2^64-1 that is written as an integer, and an object with
// "data", "date" or "real" as its only key whose text is not of the form above.
PropertyListFromJson valueFromJson(const nlohmann::json& json);
PropertyListFromJson valueFromJson(const nlohmann::ordered_json& json);

// The same from text. An error in the text says at which byte.
PropertyListFromJson valueFromJsonText(std::string_view text);

}  // namespace settings
