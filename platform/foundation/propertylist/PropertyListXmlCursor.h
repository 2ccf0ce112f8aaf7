#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/foundation/text/TextWords.h"

namespace platform {

enum class PlistElement : std::uint8_t {
  key,
  string,
  integer,
  real,
  booleanTrue,
  booleanFalse,
  data,
  date,
  array,
  dict,
  plist,
};

// Returns the end tag in its usual form, "</string>".
constexpr std::string_view endTagOf(PlistElement element) noexcept {
  constexpr std::string_view tags[] = {"</key>",   "</string>", "</integer>", "</real>",
                                       "</true>",  "</false>",  "</data>",    "</date>",
                                       "</array>", "</dict>",   "</plist>"};
  return tags[static_cast<std::size_t>(element)];
}

// Returns the element's name in a tag.
constexpr std::string_view nameOf(PlistElement element) noexcept {
  const std::string_view tag = endTagOf(element);
  return tag.substr(2, tag.size() - 3);
}

// Reads the markup of a property list in UTF-8 in one pass. Functions return false for invalid
// input; `problem` then says what is wrong and where.
//
// For one thread. The text must outlive the cursor.
class PropertyListXmlCursor {
 public:
  struct Tag {
    PlistElement element = PlistElement::plist;
    bool closing = false;  // </dict>
    bool empty = false;    // <dict/>
    std::size_t offset = 0;
  };
  struct Problem {
    std::size_t offset = 0;
    std::string reason;
    std::string accepted;
  };

  explicit PropertyListXmlCursor(std::string_view text) noexcept
      : _begin(text.data()), _at(text.data()), _end(text.data() + text.size()) {}

  std::size_t offset() const noexcept { return static_cast<std::size_t>(_at - _begin); }
  std::string_view rest() const noexcept { return {_at, static_cast<std::size_t>(_end - _at)}; }
  bool atEnd() const noexcept { return _at == _end; }
  void advance(std::size_t bytes) noexcept { _at += bytes; }
  const Problem& problem() const noexcept { return _problem; }
  bool fail(std::size_t offset, std::string reason, std::string accepted);

  // Skips the declaration, the document type and what is allowed around them.
  bool readProlog();

  // Skips white space, comments and processing instructions.
  bool skipMisc() {
    skipSpace();
    if (_end - _at >= 2 && _at[0] == '<' && (_at[1] == '!' || _at[1] == '?')) return skipMarkup();
    return true;
  }

  // Reads a required tag. On failure, the problem lists `accepted()`.
  template <class Accepted>
  bool readTag(Tag& tag, Accepted accepted) {
    tag.offset = offset();
    return readPlainTag(tag) || readAnyTag(tag, accepted());
  }

  // Reads a required end tag.
  template <PlistElement element>
  bool readEndTag() {
    return readPlainEndTag<element>() || readAnyEndTag(element);
  }
  bool readAnyEndTag(PlistElement element);

  // Reads text up to the next tag. Resolves references, skips comments and processing instructions,
  // and copies CDATA. The view is valid until the next call.
  bool readText(std::string_view& text) {
    const char* const start = _at;
    if (!passPlainText()) return false;
    if (_at != _end && *_at == '<' && (_end - _at < 2 || (_at[1] != '!' && _at[1] != '?'))) {
      text = {start, static_cast<std::size_t>(_at - start)};
      return true;
    }
    return readMixedText(start, text);
  }

 private:
  void skipSpace() noexcept { _at = words::skipSpace(_at, _end); }
  static bool isSpace(char c) noexcept { return c == ' ' || c == '\n' || c == '\t' || c == '\r'; }
  bool startsWith(std::string_view text) const noexcept { return rest().starts_with(text); }

  // Recognises tags in their usual form with a single load.
  bool readPlainTag(Tag& tag) noexcept;
  bool take(Tag& tag, PlistElement element, std::size_t size, bool empty) noexcept;
  template <PlistElement element>
  bool readPlainEndTag() noexcept;
  bool readAnyTag(Tag& tag, std::string_view accepted);
  bool readAttributes(Tag& tag);
  bool skipMarkup();
  bool skipComment();
  bool skipInstruction();
  bool checkCharacters(std::string_view text);
  bool readDeclaration();
  bool readDocumentType();
  bool readSubset();
  void passPrintable() noexcept;
  bool passPlainText();
  bool skipLiteral(std::string_view inside);
  bool passOtherCharacter();
  bool readMixedText(const char* start, std::string_view& text);
  bool readReference();
  bool readCharacterReference();
  bool readCdata();
  bool failAtEnd(std::string_view inside, std::string_view accepted);

  const char* _begin;
  const char* _at;
  const char* _end;
  std::string _mixed;  // for text that is not contiguous
  Problem _problem;
};

inline bool PropertyListXmlCursor::take(Tag& tag, PlistElement element, std::size_t size,
                                        bool empty) noexcept {
  tag.element = element;
  tag.closing = false;
  tag.empty = empty;
  _at += size;
  return true;
}

inline bool PropertyListXmlCursor::readPlainTag(Tag& tag) noexcept {
  using words::Pattern;
  constexpr std::ptrdiff_t longest = 9;  // <integer>
  if (_end - _at < longest || *_at != '<') return false;
  const std::uint64_t word = words::load(_at + 1);
  const auto is = [word](const Pattern& pattern) { return pattern.matches(word); };
  switch (_at[1]) {
    case 'k':
      return is(Pattern("key>")) && take(tag, PlistElement::key, 5, false);
    case 's':
      return is(Pattern("string>")) && take(tag, PlistElement::string, 8, false);
    case 'i':
      return is(Pattern("integer>")) && take(tag, PlistElement::integer, 9, false);
    case 'r':
      return is(Pattern("real>")) && take(tag, PlistElement::real, 6, false);
    case 't':
      return is(Pattern("true/>")) && take(tag, PlistElement::booleanTrue, 7, true);
    case 'f':
      return is(Pattern("false/>")) && take(tag, PlistElement::booleanFalse, 8, true);
    case 'd':
      if (is(Pattern("dict>"))) return take(tag, PlistElement::dict, 6, false);
      return is(Pattern("data>")) && take(tag, PlistElement::data, 6, false);
    case 'a':
      return is(Pattern("array>")) && take(tag, PlistElement::array, 7, false);
    default:
      return false;
  }
}

template <PlistElement element>
bool PropertyListXmlCursor::readPlainEndTag() noexcept {
  constexpr std::string_view text = endTagOf(element);
  if (static_cast<std::size_t>(_end - _at) < text.size()) return false;
  if (std::string_view(_at, text.size()) != text) return false;
  _at += text.size();
  return true;
}

// Skips characters that need no check. Stops at any other character or near the end of the text.
inline void PropertyListXmlCursor::passPrintable() noexcept {
  while (_end - _at >= static_cast<std::ptrdiff_t>(words::runLimit)) {
    const std::size_t run = words::plainRun(_at, '<', '&');
    _at += run;
    if (run < words::runLimit) return;
  }
  for (; _end - _at >= 8; _at += 8) {
    const std::uint64_t word = words::load(_at);
    const std::uint64_t special = words::unprintableBytes(word) | words::bytesEqualTo(word, '<') |
                                  words::bytesEqualTo(word, '&');
    if (special == 0) continue;
    _at += words::bytesBefore(special);
    return;
  }
}

// Skips ordinary characters up to a '<', a '&' or the end.
inline bool PropertyListXmlCursor::passPlainText() {
  for (;;) {
    passPrintable();
    if (_at == _end || *_at == '<' || *_at == '&') return true;
    if (!passOtherCharacter()) return false;
  }
}

}  // namespace platform
