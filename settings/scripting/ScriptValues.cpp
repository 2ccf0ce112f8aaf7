#include "settings/scripting/ScriptValues.h"

#include <utility>

#include "platform/foundation/propertylist/PropertyList.h"
#include "settings/device/JsonText.h"

namespace settings {

using nlohmann::json;

ScriptJson jsonOfText(std::string_view text) {
  constexpr std::size_t deepest = platform::PropertyListLimits{}.depth;
  bool tooDeep = false;
  const auto visit = [&](int depth, json::parse_event_t, const json&) {
    tooDeep = tooDeep || static_cast<std::size_t>(depth) > deepest;
    return !tooDeep;
  };
  json value = json::parse(text, visit, false);
  if (tooDeep) return {{}, "is nested more than " + std::to_string(deepest) + " levels deep"};
  if (value.is_discarded()) return {{}, "is not JSON"};
  return {std::move(value), {}};
}

PropertyListFromJson valueOrNone(const json& given) {
  return given.is_null() ? PropertyListFromJson() : valueFromJson(given);
}

std::string plainText(const platform::Value& value) {
  const bool isPlain = value.isNone() || value.isString() || value.asObject();
  return isPlain ? value.description() : jsonText(jsonFromValue(value));
}

}  // namespace settings
