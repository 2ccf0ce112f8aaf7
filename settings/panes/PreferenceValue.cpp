#include "settings/panes/PreferenceValue.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <nlohmann/json.hpp>

#include "platform/foundation/propertylist/PropertyList.h"
#include "settings/device/JsonText.h"
#include "settings/device/Product.h"
#include "settings/device/PropertyListJson.h"
#include "settings/panes/FilePane.h"

namespace settings {

using nlohmann::json;
using platform::Value;
using platform::ValueKind;

namespace {

struct TypeName {
  ValueKind kind;
  std::string_view name;
};

constexpr std::array typeNames{
    TypeName{ValueKind::integer, "integer"}, TypeName{ValueKind::unsignedInteger, "integer"},
    TypeName{ValueKind::real, "real"},       TypeName{ValueKind::single, "real"},
    TypeName{ValueKind::boolean, "bool"},    TypeName{ValueKind::string, "string"},
    TypeName{ValueKind::data, "data"},       TypeName{ValueKind::array, "array"},
    TypeName{ValueKind::dictionary, "dict"},
};

std::string_view typeOf(const Value& value) {
  const auto* const found = std::ranges::find(typeNames, value.kind(), &TypeName::kind);
  return found == typeNames.end() ? "other" : found->name;
}

// Converts what the script contains to the JSON form of the type.
json normalized(std::string_view type, const json& wanted) {
  if (type == "data" && wanted.is_string()) return {{"data", wanted}};
  if (type == "bool" && wanted.is_number()) return wanted != 0;
  if (type == "bool" && (wanted == "yes" || wanted == "on")) return true;
  if (type == "bool" && (wanted == "no" || wanted == "off")) return false;
  return wanted;
}

}  // namespace

PreferenceLookup lookUpPreference(platform::FileSystem& files, std::string_view key) {
  const platform::FileContents contents = files.read(productPreferencesPath);
  if (contents.error) return {{}, contents.error.code == ENOENT, contents.error.message};
  const platform::PropertyListResult list = platform::readPropertyList(contents.bytes);
  if (!list)
    return {{}, false, "the preference file is not a property list: " + list.error->text()};
  const auto* const root = list.value.asDictionary();
  if (!root) return {{}, false, "the root of the preference file is not a dictionary"};
  const Value* const found = root->find(key);
  if (found) return {*found, false, {}};
  return {{}, true, "no value under " + std::string(key)};
}

bool isPreferenceType(std::string_view type) {
  return std::ranges::find(typeNames, type, &TypeName::name) != typeNames.end();
}

std::string preferenceTypeNames() {
  return "integer, real, bool, string, data, array or dict";
}

bool isOfPreferenceType(std::string_view type, const json& wanted) {
  const json value = normalized(type, wanted);
  if (type == "integer") return value.is_number_integer();
  if (type == "real") return value.is_number() || (value.is_object() && value.contains("real"));
  if (type == "bool") return value.is_boolean();
  if (type == "string") return value.is_string();
  if (type == "array") return value.is_array();
  return value.is_object() && (type == "dict" || value.contains("data"));
}

bool matchesPreference(const Value& stored, std::string_view type, const json& wanted) {
  if (typeOf(stored) != type) return false;
  const json value = normalized(type, wanted);
  if (type != "real" || !value.is_number()) return json(jsonFromValue(stored)) == value;
  const auto number = value.get<double>();
  return stored.doubleValue() == number ||
         (stored.kind() == ValueKind::single && stored.floatValue() == static_cast<float>(number));
}

std::string describePreference(const Value& stored) {
  return std::string(typeOf(stored)) + " " + jsonText(glanceOfValue(stored));
}

}  // namespace settings
