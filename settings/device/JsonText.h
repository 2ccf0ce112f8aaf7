#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace settings {

enum class JsonStyle {
  oneLine,
  indented,  // two spaces per level
};

// Formats JSON as text. The result is always valid UTF-8: lone surrogates and invalid bytes become
// U+FFFD. A real always has a point or an exponent; one that is not finite becomes null. Threads:
// any.
std::string jsonText(const nlohmann::json& json, JsonStyle style = JsonStyle::oneLine);
std::string jsonText(const nlohmann::ordered_json& json, JsonStyle style = JsonStyle::oneLine);

}  // namespace settings
