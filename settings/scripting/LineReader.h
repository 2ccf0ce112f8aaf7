#pragma once

#include <cstddef>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "settings/scripting/RowAddress.h"

namespace settings {

// Takes one line of a script apart, from left to right. The first thing that cannot be understood
// sticks: what is read after it is empty, and `error` says what was wrong and what is allowed.
class LineReader {
 public:
  // What follows "#" and a blank, outside of quotes, is passed over.
  explicit LineReader(std::string_view line);

  bool atEnd();
  // The next character that is no blank; 0 at the end.
  char peek();

  // A word, or a text in double quotes with the escapes \" \\ \n and \t. `what` names it in the
  // message where there is none.
  std::string word(std::string_view what);
  // A text in double quotes.
  std::string quoted(std::string_view what);
  double number(std::string_view what);
  std::size_t index(std::string_view what);
  RowAddress row();
  // A path of the device, from "/" on.
  std::string devicePath();
  // JSON: a number, true, false, null, a text in quotes, a list or a map. A bare word is a text.
  nlohmann::json value(std::string_view what);
  // The rest of the line as it stands, without the blanks at both ends.
  std::string rest(std::string_view what);
  // Takes the word where it comes next; false leaves everything as it is.
  bool skip(std::string_view word);
  // The same for the start of a word, as "status=".
  bool skipPrefix(std::string_view prefix);

  // Says that something is wrong, unless something was already.
  void fail(std::string message);
  // Refuses what is left over on the line. Call it when everything has been read.
  void expectEnd();
  const std::optional<std::string>& error() const noexcept { return _error; }

 private:
  void skipBlanks();
  std::string bareWord();
  std::string quotedText();
  std::string balanced();
  std::size_t occurrence();

  std::string _line;
  std::size_t _position = 0;
  std::optional<std::string> _error;
};

}  // namespace settings
