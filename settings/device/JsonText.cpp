#include "settings/device/JsonText.h"

#include <nlohmann/json.hpp>

namespace settings {
namespace {

template <class Json>
std::string textOf(const Json& json, JsonStyle style) {
  const int indent = style == JsonStyle::indented ? 2 : -1;
  return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

}  // namespace

std::string jsonText(const nlohmann::json& json, JsonStyle style) {
  return textOf(json, style);
}

std::string jsonText(const nlohmann::ordered_json& json, JsonStyle style) {
  return textOf(json, style);
}

}  // namespace settings
