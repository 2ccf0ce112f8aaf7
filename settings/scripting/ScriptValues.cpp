#include "settings/scripting/ScriptValues.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "platform/foundation/propertylist/PropertyList.h"
#include "settings/device/PropertyListJson.h"

namespace settings {

using nlohmann::json;
using nlohmann::ordered_json;

ScriptJson jsonOfText(std::string_view text) {
  constexpr std::size_t deepest = platform::PropertyListLimits{}.depth;
  bool tooDeep = false;
  const auto visit = [&](int depth, json::parse_event_t, const json&) {
    tooDeep = tooDeep || static_cast<std::size_t>(depth) > deepest;
    return !tooDeep;
  };
  json value = json::parse(text, visit, false);
  if (tooDeep)
    return {{}, "nests more than " + std::to_string(deepest) + " deep, which is the limit"};
  if (value.is_discarded()) return {{}, "is no JSON"};
  return {std::move(value), {}};
}

ScriptValue valueOfJson(const json& given) {
  if (given.is_null()) return {};
  PropertyListFromJson read = valueFromJson(ordered_json(given));
  return {std::move(read.value), read.error.value_or("")};
}

PropertyListBytes propertyListBytes(const json& given) {
  const PropertyListFromJson read = valueFromJson(ordered_json(given));
  if (!read) return {{}, *read.error};
  platform::PropertyListText text = platform::writeXmlPropertyList(read.value);
  return {std::move(text.bytes), text.error.value_or("")};
}

json jsonOfValue(const platform::Value& value) {
  return json(jsonFromValue(value));
}

std::string jsonText(const json& given, int indent) {
  return given.dump(indent, ' ', false, json::error_handler_t::replace);
}

std::string plainText(const platform::Value& value) {
  const bool isPlain = value.isNone() || value.isString() || value.asObject();
  return isPlain ? value.description() : jsonTextFromValue(value, -1);
}

}  // namespace settings
