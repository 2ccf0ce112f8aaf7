#include "settings/panes/FilePane.h"

#include <cerrno>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "platform/foundation/propertylist/PropertyList.h"
#include "settings/device/Product.h"
#include "settings/device/PropertyListJson.h"

namespace settings {
namespace {

std::string kindName(platform::ValueKind kind) {
  switch (kind) {
    case platform::ValueKind::none:
      return "nothing";
    case platform::ValueKind::boolean:
      return "a boolean";
    case platform::ValueKind::integer:
    case platform::ValueKind::unsignedInteger:
      return "an integer";
    case platform::ValueKind::single:
    case platform::ValueKind::real:
      return "a real";
    case platform::ValueKind::string:
      return "a string";
    case platform::ValueKind::data:
      return "data";
    case platform::ValueKind::date:
      return "a date";
    case platform::ValueKind::array:
      return "an array";
    case platform::ValueKind::dictionary:
      return "a dictionary";
    case platform::ValueKind::object:
      return "an object";
  }
  return "something else";
}

nlohmann::json changes(const platform::Dictionary& before, const platform::Dictionary& after) {
  std::set<std::string> keys;
  for (const auto& entry : before) keys.emplace(entry.key);
  for (const auto& entry : after) keys.emplace(entry.key);
  nlohmann::json result = nlohmann::json::array();
  for (const std::string& key : keys) {
    const platform::Value* was = before.find(key);
    const platform::Value* is = after.find(key);
    if (was && is && was->kind() == is->kind() && *was == *is) continue;
    result.push_back({{"key", key},
                      {"before", was ? glanceOfValue(*was) : nlohmann::json()},
                      {"after", is ? glanceOfValue(*is) : nlohmann::json()}});
  }
  return result;
}

}  // namespace

nlohmann::json glanceOfValue(const platform::Value& value) {
  if (const auto* data = value.asData()) return {{"data", data->size()}};
  if (const auto* array = value.asArray()) {
    nlohmann::json result = nlohmann::json::array();
    for (const platform::Value& element : *array) result.push_back(glanceOfValue(element));
    return result;
  }
  if (const auto* dictionary = value.asDictionary()) {
    nlohmann::json result = nlohmann::json::object();
    for (const auto& entry : *dictionary) {
      result[std::string(entry.key)] = glanceOfValue(entry.value);
    }
    return result;
  }
  return jsonFromValue(value);
}

void FilePane::parse() {
  const platform::PropertyListResult list = platform::readPropertyList(_bytes);
  _entries = {};
  _state = State::problem;
  if (!list) {
    _problem = "The file is not a property list: " + list.error->text();
  } else if (const auto* root = list.value.asDictionary()) {
    _state = State::ok;
    _entries = *root;
  } else {
    _problem =
        "The root of the property list is " + kindName(list.value.kind()) + ", not a dictionary";
  }
  if (_state == State::problem)
    _problem += ". The settings start empty; the next change replaces it.";
}

void FilePane::read() {
  platform::FileContents contents = _files.read(productPreferencesPath);
  if (!contents.error) {
    if (_state != State::missing && contents.bytes == _bytes && !_bytes.empty()) return;
    _bytes = contents.bytes;
    parse();
    return;
  }
  _bytes.clear();
  _entries = {};
  const bool missing =
      contents.error.code == ENOENT && !_files.attributesOfItem(productPreferencesPath);
  _state = missing ? State::missing : State::problem;
  _problem = missing ? "" : contents.error.message + ". The settings start empty.";
}

void FilePane::beginAction() {
  read();
  _before = _entries;
}

nlohmann::json FilePane::json() {
  read();
  nlohmann::json pane{{"path", productPreferencesPath}, {"entries", nlohmann::json::object()}};
  switch (_state) {
    case State::ok:
      pane["state"] = "ok";
      break;
    case State::missing:
      pane["state"] = "missing";
      break;
    case State::problem:
      pane["state"] = "problem";
      break;
  }
  if (_state == State::problem) pane["problem"] = _problem;
  for (const auto& entry : _entries)
    pane["entries"][std::string(entry.key)] = glanceOfValue(entry.value);
  pane["changed"] = changes(_before, _entries);
  return pane;
}

}  // namespace settings
