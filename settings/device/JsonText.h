#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace settings {

enum class JsonStyle {
  oneLine,
  indented,  // two spaces a level
};

// JSON as text, always valid UTF-8: what is not in it (a lone surrogate, a stray byte) becomes
// U+FFFD. A real has a point or an exponent; one that is not finite is null. Threads: any.
std::string jsonText(const nlohmann::json& json, JsonStyle style = JsonStyle::oneLine);
std::string jsonText(const nlohmann::ordered_json& json, JsonStyle style = JsonStyle::oneLine);

}  // namespace settings
