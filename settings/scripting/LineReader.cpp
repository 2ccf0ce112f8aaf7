#include "settings/scripting/LineReader.h"

#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

#include "settings/scripting/ScriptValues.h"

namespace settings {
namespace {

bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r';
}

// The start of the comment; the line's length if there is none.
std::size_t commentStart(std::string_view line) {
  bool inQuotes = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (inQuotes && line[i] == '\\') {
      ++i;
    } else if (line[i] == '"') {
      inQuotes = !inQuotes;
    } else if (!inQuotes && line[i] == '#' && (i == 0 || isBlank(line[i - 1])) &&
               (i + 1 == line.size() || isBlank(line[i + 1]))) {
      return i;
    }
  }
  return line.size();
}

}  // namespace

LineReader::LineReader(std::string_view line) : _line(line.substr(0, commentStart(line))) {
  while (!_line.empty() && isBlank(_line.back())) _line.pop_back();
}

void LineReader::skipBlanks() {
  while (_position < _line.size() && isBlank(_line[_position])) ++_position;
}

bool LineReader::atEnd() {
  skipBlanks();
  return _position >= _line.size();
}

char LineReader::peek() {
  return atEnd() ? '\0' : _line[_position];
}

void LineReader::fail(std::string message) {
  if (!_error) _error = std::move(message);
}

void LineReader::expectEnd() {
  if (!_error && !atEnd()) {
    fail("unexpected text at the end of the line: \"" + _line.substr(_position) + "\"");
  }
}

std::string LineReader::bareWord() {
  const std::size_t start = _position;
  while (_position < _line.size() && !isBlank(_line[_position])) ++_position;
  return _line.substr(start, _position - start);
}

std::string LineReader::quotedText() {
  std::string text;
  for (++_position; _position < _line.size(); ++_position) {
    char c = _line[_position];
    if (c == '"') {
      ++_position;
      return text;
    }
    if (c == '\\' && _position + 1 < _line.size()) {
      c = _line[++_position];
      if (c == 'n') c = '\n';
      if (c == 't') c = '\t';
    }
    text += c;
  }
  fail("missing closing quote (write a quote inside the text as \\\")");
  return {};
}

std::string LineReader::word(std::string_view what) {
  if (_error) return {};
  if (atEnd()) {
    fail(std::string(what) + " is missing");
    return {};
  }
  return _line[_position] == '"' ? quotedText() : bareWord();
}

std::string LineReader::quoted(std::string_view what) {
  if (_error) return {};
  if (peek() == '"') return quotedText();
  fail(std::string(what) + " is missing (expected a text in double quotes)");
  return {};
}

double LineReader::number(std::string_view what) {
  const std::string text = word(what);
  if (_error) return 0;
  double result = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(result)) {
    fail(std::string(what) + " is not a number: \"" + text + "\" (expected a number such as 0.5)");
    return 0;
  }
  return result;
}

std::size_t LineReader::index(std::string_view what) {
  const std::string text = word(what);
  if (_error) return 0;
  std::size_t result = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
  if (error != std::errc() || end != text.data() + text.size()) {
    fail(std::string(what) + " is not a whole number: \"" + text + "\" (expected 0 or more)");
    return 0;
  }
  return result;
}

std::size_t LineReader::occurrence() {
  if (_position >= _line.size() || _line[_position] != '~') return 1;
  ++_position;
  const std::size_t result = index("the number after \"~\"");
  if (!_error && result == 0) fail("the number after \"~\" must be 1 or more");
  return result;
}

RowAddress LineReader::row() {
  RowAddress address;
  const char first = peek();
  if (_error) return address;
  if (first == '"') {
    address.by = RowAddress::By::label;
    address.name = quotedText();
    address.occurrence = occurrence();
  } else if (first == '#') {
    const std::size_t end = _line.find_first_of(" \t~", _position);
    const std::size_t start = _position + 1;
    _position = end == std::string::npos ? _line.size() : end;
    address.name = _line.substr(start, _position - start);
    address.occurrence = occurrence();
  } else if (first >= '0' && first <= '9') {
    address.by = RowAddress::By::position;
    address.section = index("SECTION");
    address.row = index("ROW");
  } else {
    fail((first == '\0' ? std::string("ROW is missing") : "not a row: \"" + bareWord() + "\"") +
         " (expected #identifier, a label in quotes, or SECTION ROW as two numbers)");
  }
  return address;
}

std::string LineReader::devicePath() {
  std::string path = word("PATH");
  if (!_error && !path.starts_with('/')) {
    fail("not a device path: \"" + path + "\" (expected a path that starts with \"/\")");
  }
  return path;
}

std::string LineReader::balanced() {
  const std::size_t start = _position;
  std::size_t depth = 0;
  while (_position < _line.size()) {
    const char c = _line[_position];
    if (c == '"') {
      quotedText();
      continue;
    }
    ++_position;
    if (c == '{' || c == '[') ++depth;
    if ((c == '}' || c == ']') && --depth == 0) break;
  }
  return _line.substr(start, _position - start);
}

nlohmann::json LineReader::value(std::string_view what) {
  const char first = peek();
  if (_error) return nullptr;
  if (first == '"') return quotedText();
  if (first == '{' || first == '[') {
    const std::string text = balanced();
    ScriptJson parsed = jsonOfText(text);
    if (!parsed.problem.empty()) fail("\"" + text + "\" " + parsed.problem);
    return std::move(parsed.value);
  }
  const std::string text = word(what);
  if (text == "nil") return nullptr;
  ScriptJson parsed = jsonOfText(text);
  return parsed.problem.empty() ? std::move(parsed.value) : nlohmann::json(text);
}

std::string LineReader::rest(std::string_view what) {
  if (_error) return {};
  if (atEnd()) {
    fail(std::string(what) + " is missing");
    return {};
  }
  return _line.substr(std::exchange(_position, _line.size()));
}

bool LineReader::skip(std::string_view word) {
  if (_error || atEnd()) return false;
  const std::size_t end = _position + word.size();
  if (std::string_view(_line).substr(_position, word.size()) != word) return false;
  if (end < _line.size() && !isBlank(_line[end])) return false;
  _position = end;
  return true;
}

bool LineReader::skipPrefix(std::string_view prefix) {
  if (_error || atEnd()) return false;
  if (std::string_view(_line).substr(_position, prefix.size()) != prefix) return false;
  _position += prefix.size();
  return true;
}

}  // namespace settings
