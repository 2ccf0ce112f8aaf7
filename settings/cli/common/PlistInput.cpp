#include "settings/cli/common/PlistInput.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "settings/cli/common/HostFile.h"
#include "settings/device/JsonText.h"
#include "settings/device/PropertyListJson.h"

namespace settings {
namespace {

bool looksLikeJson(std::string_view bytes) {
  const std::size_t first = bytes.find_first_not_of(" \t\r\n");
  return first != std::string_view::npos && (bytes[first] == '{' || bytes[first] == '[');
}

PlistInput parseJson(std::string_view bytes) {
  PropertyListFromJson read = valueFromJsonText(bytes);
  PlistInput input{std::move(read.value), std::nullopt};
  if (read.error) input.error.emplace().reason = *read.error;
  return input;
}

const char* kindName(platform::ValueKind kind) {
  using platform::ValueKind;
  switch (kind) {
    case ValueKind::boolean:
      return "bool";
    case ValueKind::integer:
    case ValueKind::unsignedInteger:
      return "integer";
    case ValueKind::single:
    case ValueKind::real:
      return "real";
    case ValueKind::string:
      return "string";
    case ValueKind::data:
      return "data";
    case ValueKind::date:
      return "date";
    case ValueKind::array:
      return "array";
    case ValueKind::dictionary:
      return "dict";
    case ValueKind::none:
    case ValueKind::object:
      break;
  }
  return "object";
}

void printEntry(std::ostream& output, std::size_t depth, std::string_view name,
                const platform::Value& value);

void printMembers(std::ostream& output, std::size_t depth, const platform::Value& value) {
  if (const platform::Dictionary* dictionary = value.asDictionary()) {
    for (const auto& [key, member] : *dictionary) printEntry(output, depth, key, member);
  }
  if (const platform::Array* array = value.asArray()) {
    for (std::size_t index = 0; index < array->size(); ++index) {
      printEntry(output, depth, std::to_string(index), (*array)[index]);
    }
  }
}

void printEntry(std::ostream& output, std::size_t depth, std::string_view name,
                const platform::Value& value) {
  output << std::string(depth * 2, ' ') << name << ": " << outlineText(value) << '\n';
  printMembers(output, depth + 1, value);
}

}  // namespace

PlistInput parsePlistOrJson(std::string_view bytes) {
  if (looksLikeJson(bytes)) return parseJson(bytes);
  platform::PropertyListResult read = platform::readPropertyList(bytes);
  return {std::move(read.value), std::move(read.error)};
}

std::string refusalLine(const std::string& name, const platform::PropertyListError& error) {
  std::string line = name + ": " + error.text();
  if (!error.accepted.empty()) line += "; accepted: " + error.accepted;
  return line;
}

std::optional<platform::Value> readPlistFile(const std::string& name, CommandContext& context) {
  std::string problem;
  const auto bytes = readHostFile(name, context.input, problem);
  if (!bytes) {
    context.status = context.fail(shownName(name) + ": " + problem);
    return std::nullopt;
  }
  PlistInput input = parsePlistOrJson(*bytes);
  if (!input) {
    context.status = context.fail(refusalLine(shownName(name), *input.error));
    return std::nullopt;
  }
  return std::move(input.value);
}

std::string outlineText(const platform::Value& value) {
  const std::string kind = kindName(value.kind());
  if (const platform::Array* array = value.asArray()) {
    return "array of " + std::to_string(array->size());
  }
  if (const platform::Dictionary* dictionary = value.asDictionary()) {
    return "dict of " + std::to_string(dictionary->size());
  }
  if (const platform::Data* data = value.asData()) {
    return std::to_string(data->size()) + " bytes (data)";
  }
  // A value without a JSON type is an object with one member.
  const auto converted = jsonFromValue(value);
  if (converted.is_object()) return converted.begin()->get<std::string>() + " (" + kind + ")";
  return jsonText(converted) + " (" + kind + ")";
}

void printOutline(std::ostream& output, const platform::Value& value) {
  if (value.asArray() == nullptr && value.asDictionary() == nullptr) {
    output << outlineText(value) << '\n';
  } else {
    printMembers(output, 0, value);
  }
}

}  // namespace settings
