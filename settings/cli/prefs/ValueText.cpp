#include "settings/cli/prefs/ValueText.h"

#include <charconv>
#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "settings/device/PropertyListJson.h"

namespace settings {
namespace {

ParsedValue notParsed(std::string problem) {
  return {{}, std::move(problem)};
}

ParsedValue parsed(PropertyListFromJson read) {
  return {std::move(read.value), std::move(read.error).value_or(std::string())};
}

ParsedValue parseBoolean(const std::string& text) {
  if (text == "true" || text == "yes" || text == "1") return {platform::Value(true), {}};
  if (text == "false" || text == "no" || text == "0") return {platform::Value(false), {}};
  return notParsed("not a bool: \"" + text + "\" (expected true, false, yes, no, 1 or 0)");
}

template <class Integer>
std::optional<Integer> wholeNumber(const std::string& text) {
  Integer number = 0;
  const char* end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, number);
  if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
  return number;
}

ParsedValue parseInteger(const std::string& text) {
  if (const auto number = wholeNumber<std::int64_t>(text)) return {platform::Value(*number), {}};
  if (const auto number = wholeNumber<std::uint64_t>(text)) return {platform::Value(*number), {}};
  return notParsed("not an integer: \"" + text + "\" (expected a 64-bit whole number such as -5)");
}

ParsedValue parseReal(const std::string& text) {
  double number = 0;
  const char* end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, number);
  if (read.ec == std::errc() && read.ptr == end) return {platform::Value(number), {}};
  return notParsed("not a real: \"" + text + "\" (expected a double-precision number such as 0.5)");
}

ParsedValue parseString(const std::string& text) {
  return {platform::Value(text), {}};
}

// A value without a JSON type is an object with one member.
ParsedValue parseMember(const char* member, const std::string& text) {
  return parsed(valueFromJson(nlohmann::ordered_json::object({{member, text}})));
}

ParsedValue parseData(const std::string& text) {
  return parseMember("data", text);
}

ParsedValue parseDate(const std::string& text) {
  return parseMember("date", text);
}

ParsedValue parseArray(const std::string& text) {
  ParsedValue value = parsed(valueFromJsonText(text));
  const bool isOther = value.problem.empty() && value.value.asArray() == nullptr;
  return isOther ? notParsed("an array must be JSON such as [1, \"two\"]") : value;
}

ParsedValue parseDictionary(const std::string& text) {
  ParsedValue value = parsed(valueFromJsonText(text));
  const bool isOther = value.problem.empty() && value.value.asDictionary() == nullptr;
  return isOther ? notParsed("a dict must be JSON such as {\"key\": 1}") : value;
}

using Parser = ParsedValue (*)(const std::string&);

const std::map<std::string, Parser>& parsers() {
  static const std::map<std::string, Parser> byName = {
      {"array", parseArray}, {"bool", parseBoolean},    {"data", parseData},
      {"date", parseDate},   {"dict", parseDictionary}, {"integer", parseInteger},
      {"real", parseReal},   {"string", parseString},
  };
  return byName;
}

}  // namespace

const std::vector<std::string>& valueTypeNames() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> made;
    for (const auto& [name, parser] : parsers()) made.push_back(name);
    return made;
  }();
  return names;
}

ParsedValue parseValueText(const std::string& text, const std::string& type) {
  if (!type.empty()) {
    const auto parser = parsers().find(type);
    return parser == parsers().end() ? notParsed("there is no type \"" + type + "\"")
                                     : parser->second(text);
  }
  if (!nlohmann::json::accept(text)) return parseString(text);
  if (text == "null") return notParsed("null is not a value; use `prefs remove` to remove a key");
  return parsed(valueFromJsonText(text));
}

}  // namespace settings
