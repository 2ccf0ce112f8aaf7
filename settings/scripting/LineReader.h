#pragma once

#include <cstddef>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "settings/scripting/RowAddress.h"

namespace settings {

// Parses one line of a script from left to right. The first error is kept: everything that is read
// after it is empty, and `error` says what is wrong and what is expected.
class LineReader {
 public:
  // Ignores a comment: "#" followed by a blank, outside of quotes, and the rest of the line.
  explicit LineReader(std::string_view line);

  bool atEnd();
  // The next character that is not a blank; 0 at the end.
  char peek();

  // Reads a word, or a text in double quotes with the escapes \" \\ \n and \t. `what` names it in
  // the error message.
  std::string word(std::string_view what);
  // Reads a text in double quotes.
  std::string quoted(std::string_view what);
  double number(std::string_view what);
  std::size_t index(std::string_view what);
  RowAddress row();
  // Reads a device path, which starts with "/".
  std::string devicePath();
  // Reads JSON: a number, true, false, null, a text in quotes, an array or an object. A bare word
  // is a string.
  nlohmann::json value(std::string_view what);
  // Reads the rest of the line unchanged, without blanks at both ends.
  std::string rest(std::string_view what);
  // Reads the word if it comes next; otherwise reads nothing and returns false.
  bool skip(std::string_view word);
  // The same for a prefix of a word, such as "status=".
  bool skipPrefix(std::string_view prefix);

  // Sets the error unless there is one already.
  void fail(std::string message);
  // Sets an error if text remains on the line. Call it after everything has been read.
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
