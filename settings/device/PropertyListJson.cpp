#include "settings/device/PropertyListJson.h"

#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/text/Base64.h"
#include "platform/foundation/text/NumberText.h"
#include "platform/foundation/values/Collections.h"
#include "settings/device/JsonText.h"

namespace settings {
namespace {

using nlohmann::ordered_json;
using platform::Array;
using platform::Data;
using platform::Date;
using platform::Dictionary;
using platform::Value;
using platform::ValueKind;

// An object with one of these as its only key is not a plain dictionary.
constexpr std::string_view dataKey = "data";
constexpr std::string_view dateKey = "date";
constexpr std::string_view realKey = "real";
// Wraps a dictionary that could be mistaken for one of the above or for this wrapper.
constexpr std::string_view plainKey = "dictionary";

ordered_json tagged(std::string_view key, ordered_json content) {
  ordered_json json = ordered_json::object();
  json[std::string(key)] = std::move(content);
  return json;
}

ordered_json jsonFromReal(double value) {
  if (std::isfinite(value)) return value;
  return tagged(realKey, platform::number_text::formatReal(value));
}

ordered_json jsonFromDate(Date date) {
  const auto text = platform::number_text::formatDate(date.secondsSinceReferenceDate);
  if (text) return tagged(dateKey, *text);
  return tagged(dateKey, platform::number_text::formatShortest(date.secondsSinceReferenceDate));
}

bool isAmbiguous(const Dictionary& dictionary) {
  if (dictionary.size() != 1) return false;
  const auto [key, value] = *dictionary.begin();
  if (key == plainKey) return value.asDictionary() != nullptr;
  return value.isString() && (key == dataKey || key == dateKey || key == realKey);
}

ordered_json jsonFromDictionary(const Dictionary& dictionary) {
  ordered_json json = ordered_json::object();
  // Appends at the end: the keys are unique, so no search for an equal key is needed.
  auto& members = json.get_ref<ordered_json::object_t&>();
  members.reserve(dictionary.size());
  for (const auto& [key, value] : dictionary) {
    members.emplace_back(std::string(key), jsonFromValue(value));
  }
  return isAmbiguous(dictionary) ? tagged(plainKey, std::move(json)) : json;
}

ordered_json jsonFromArray(const Array& array) {
  ordered_json json = ordered_json::array();
  for (const Value& value : array) json.push_back(jsonFromValue(value));
  return json;
}

// Receives the JSON parser's events and builds values from the inside out. The Interpreter decides
// what an object stands for.
class ValueHandler : public nlohmann::json_sax<ordered_json> {
 public:
  PropertyListFromJson result() && {
    if (_error.empty()) return {std::move(_root), {}};
    return {Value(), std::move(_error)};
  }

  bool null() override { return refuse("null is not a property list value"); }
  bool boolean(bool value) override { return add(value); }
  bool number_integer(number_integer_t value) override { return add(Value::integer(value)); }
  bool number_unsigned(number_unsigned_t value) override {
    return add(Value::unsignedInteger(value));
  }
  bool number_float(number_float_t value, const string_t& text) override {
    if (text.find_first_of(".eE") != string_t::npos) return add(Value::real(value));
    return refuse("the integer " + text + " is outside -2^63 to 2^64-1");
  }
  bool string(string_t& value) override { return add(Value::string(value)); }
  bool binary(binary_t&) override { return refuse("binary is not JSON"); }
  bool start_object(std::size_t) override { return begin(true); }
  bool key(string_t& key) override {
    _frames.back().key = std::move(key);
    return true;
  }
  bool start_array(std::size_t) override { return begin(false); }
  bool end_array() override {
    Array array(std::move(_frames.back().elements));
    _frames.pop_back();
    return add(std::move(array));
  }
  bool end_object() override {
    Dictionary dictionary(std::move(_frames.back().entries));
    _frames.pop_back();
    return add(std::move(dictionary));
  }
  bool parse_error(std::size_t position, const std::string&,
                   const ordered_json::exception& error) override {
    // The library's messages start with its own name and an error number in brackets.
    const std::string_view what = error.what();
    const auto end = what.find("] ");
    return refuse("byte " + std::to_string(position) + ": not JSON: " +
                  std::string(end == std::string_view::npos ? what : what.substr(end + 2)));
  }

 private:
  struct Frame {
    bool object;
    std::string key;
    std::vector<Value> elements;
    std::vector<std::pair<std::string, Value>> entries;
  };

  bool refuse(std::string why) {
    _error = std::move(why);
    return false;
  }

  bool begin(bool object) {
    const std::size_t limit = platform::PropertyListLimits{}.depth;
    if (_frames.size() >= limit) {
      return refuse("nested more than " + std::to_string(limit) + " levels deep");
    }
    _frames.push_back({object, {}, {}, {}});
    return true;
  }

  bool add(Value value) {
    if (_frames.empty()) {
      _root = std::move(value);
    } else if (_frames.back().object) {
      _frames.back().entries.emplace_back(std::move(_frames.back().key), std::move(value));
    } else {
      _frames.back().elements.push_back(std::move(value));
    }
    return true;
  }

  std::vector<Frame> _frames;
  Value _root;
  std::string _error;
};

// Replaces the objects that stand for data, dates, reals and dictionaries. The parser has limited
// the depth already.
class Interpreter {
 public:
  PropertyListFromJson run(const Value& raw) {
    Value value = interpreted(raw);
    if (_error) return {Value(), std::move(_error)};
    return {std::move(value), {}};
  }

 private:
  Value refuse(const char* why) {
    _error = why;
    return {};
  }

  Value interpreted(const Value& raw) {
    if (_error) return {};
    if (const Array* array = raw.asArray()) return elementsOf(*array);
    const Dictionary* dictionary = raw.asDictionary();
    if (dictionary == nullptr) return raw;
    if (!isAmbiguous(*dictionary)) return membersOf(*dictionary);
    const auto [key, value] = *dictionary->begin();
    if (key == plainKey) return membersOf(*value.asDictionary());
    if (key == dataKey) return dataOf(*value.asString());
    return key == dateKey ? dateOf(*value.asString()) : realOf(*value.asString());
  }

  Value elementsOf(const Array& array) {
    std::vector<Value> elements;
    elements.reserve(array.size());
    for (const Value& element : array) elements.push_back(interpreted(element));
    return Array(std::move(elements));
  }

  Value membersOf(const Dictionary& dictionary) {
    std::vector<std::pair<std::string, Value>> entries;
    entries.reserve(dictionary.size());
    for (const auto& [key, value] : dictionary) entries.emplace_back(key, interpreted(value));
    return Dictionary(std::move(entries));
  }

  Value dataOf(std::string_view text) {
    const platform::base64::Scan scan = platform::base64::scan(text);
    if (scan.problem != nullptr || scan.length != text.size()) {
      return refuse("{\"data\": ...} takes base64 text");
    }
    std::vector<std::uint8_t> bytes(scan.size + platform::base64::decodeSlack);
    platform::base64::decode(text, bytes.data());
    bytes.resize(scan.size);
    return Data(std::move(bytes));
  }

  Value dateOf(std::string_view text) {
    const auto seconds = platform::number_text::parseDate(text);
    if (!seconds) return refuse("{\"date\": ...} takes a date such as 2026-01-02T03:04:05Z");
    return Date{*seconds};
  }

  Value realOf(std::string_view text) {
    const auto real = platform::number_text::parseReal(text);
    if (!real) return refuse("{\"real\": ...} takes nan, +infinity, -infinity or a number");
    return Value::real(*real);
  }

  std::optional<std::string> _error;
};

}  // namespace

ordered_json jsonFromValue(const Value& value) {
  switch (value.kind()) {
    case ValueKind::none:
      return nullptr;
    case ValueKind::boolean:
      return value.boolValue();
    case ValueKind::integer:
      return value.integerValue();
    case ValueKind::unsignedInteger:
      return value.unsignedIntegerValue();
    case ValueKind::single:
    case ValueKind::real:
      return jsonFromReal(value.doubleValue());
    case ValueKind::data:
      return tagged(dataKey, platform::base64::encode(value.asData()->bytes()));
    case ValueKind::date:
      return jsonFromDate(*value.asDate());
    case ValueKind::array:
      return jsonFromArray(*value.asArray());
    case ValueKind::dictionary:
      return jsonFromDictionary(*value.asDictionary());
    default:
      return value.description();
  }
}

PropertyListFromJson valueFromJson(const nlohmann::json& json) {
  return valueFromJsonText(jsonText(json));
}

PropertyListFromJson valueFromJson(const ordered_json& json) {
  return valueFromJsonText(jsonText(json));
}

PropertyListFromJson valueFromJsonText(std::string_view text) {
  ValueHandler handler;
  ordered_json::sax_parse(text.begin(), text.end(), &handler);
  PropertyListFromJson raw = std::move(handler).result();
  return raw ? Interpreter().run(raw.value) : raw;
}

}  // namespace settings
