#include "platform/foundation/propertylist/PropertyListXmlCursor.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/foundation/text/Utf.h"

namespace platform {
namespace {

constexpr int elementCount = 11;

bool isNameCharacter(char c) noexcept {
  const auto byte = static_cast<unsigned char>(c);
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
         c == '-' || c == '.' || c == ':' || byte >= 0x80;
}

std::string shortened(std::string_view text) {
  constexpr std::size_t shown = 40;
  if (text.size() <= shown) return std::string(text);
  std::size_t end = shown;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80) --end;
  return std::string(text.substr(0, end)) + "...";
}

std::string hexadecimal(char32_t scalar) {
  std::array<char, 16> digits{};
  const auto result = std::to_chars(digits.data(), digits.data() + digits.size(),
                                    static_cast<std::uint32_t>(scalar), 16);
  std::string text(digits.data(), result.ptr);
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'a' ? static_cast<char>(c - 32) : c; });
  return "U+" + std::string(text.size() < 4 ? 4 - text.size() : 0, '0') + text;
}

constexpr std::string_view acceptedCharacters =
    "tab, line feed, carriage return, and from U+0020 on all but surrogates, U+FFFE and U+FFFF";
constexpr std::string_view acceptedReferences = "&lt; &gt; &amp; &quot; &apos; &#N; &#xN;";

}  // namespace

bool PropertyListXmlCursor::fail(std::size_t offset, std::string reason, std::string accepted) {
  _problem = {offset, std::move(reason), std::move(accepted)};
  return false;
}

bool PropertyListXmlCursor::failAtEnd(std::string_view inside, std::string_view accepted) {
  return fail(static_cast<std::size_t>(_end - _begin),
              "the text ends inside " + std::string(inside), std::string(accepted));
}

bool PropertyListXmlCursor::readAnyTag(Tag& tag, std::string_view accepted) {
  if (_at == _end) return fail(tag.offset, "the text ends too early", std::string(accepted));
  if (*_at != '<') {
    return fail(tag.offset, "text where only a tag is allowed", std::string(accepted));
  }
  ++_at;
  tag.closing = _at != _end && *_at == '/';
  if (tag.closing) ++_at;
  const char* const start = _at;
  while (_at != _end && isNameCharacter(*_at)) ++_at;
  const std::string_view name(start, static_cast<std::size_t>(_at - start));
  if (_at == _end) return failAtEnd("a tag", accepted);
  if (name.empty()) {
    const bool isMarkup = *_at == '!' || *_at == '?';
    return fail(tag.offset,
                isMarkup ? "markup such as a comment or CDATA where only a tag is allowed"
                         : "a tag has no name",
                std::string(accepted));
  }
  int element = 0;
  while (element < elementCount && nameOf(static_cast<PlistElement>(element)) != name) ++element;
  if (element == elementCount) {
    const std::string shown = (tag.closing ? "</" : "<") + shortened(name) + ">";
    return fail(tag.offset, shown + " is not an element of a property list", std::string(accepted));
  }
  tag.element = static_cast<PlistElement>(element);
  return readAttributes(tag);
}

// Skips attributes, which have no meaning here, and the end of the tag.
bool PropertyListXmlCursor::readAttributes(Tag& tag) {
  tag.empty = false;
  for (;;) {
    const char* const before = _at;
    skipSpace();
    if (_at == _end) return failAtEnd("a tag", ">");
    if (*_at == '>') break;
    if (*_at == '/' && !tag.closing && _end - _at > 1 && _at[1] == '>') {
      tag.empty = true;
      ++_at;
      break;
    }
    const char* const name = _at;
    while (_at != _end && isNameCharacter(*_at)) ++_at;
    if (tag.closing || _at == name || before == name) {
      return fail(offset(), "the tag is not closed", ">");
    }
    if (!checkCharacters({name, static_cast<std::size_t>(_at - name)})) return false;
    skipSpace();
    if (_at == _end || *_at != '=') return fail(offset(), "an attribute has no value", "=");
    ++_at;
    skipSpace();
    if (_at == _end || (*_at != '"' && *_at != '\'')) {
      return fail(offset(), "the value of an attribute is not in quotes", "\"");
    }
    const char* const value = _at + 1;
    _at = std::find(value, _end, *_at);
    if (_at == _end) return failAtEnd("the value of an attribute", "the closing quote");
    const std::string_view content(value, static_cast<std::size_t>(_at - value));
    if (!checkCharacters(content)) return false;
    if (content.find('<') != std::string_view::npos) {
      return fail(tag.offset, "'<' is not allowed in the value of an attribute", "&lt;");
    }
    ++_at;
  }
  ++_at;
  return true;
}

bool PropertyListXmlCursor::readAnyEndTag(PlistElement element) {
  const std::string_view name = nameOf(element);
  const std::string accepted = "</" + std::string(name) + ">";
  Tag tag;
  tag.offset = offset();
  if (_at == _end) return fail(tag.offset, "the text ends before " + accepted, accepted);
  if (!readAnyTag(tag, accepted)) return false;
  if (tag.closing && tag.element == element) return true;
  return fail(tag.offset,
              "expected " + accepted + ", found <" + (tag.closing ? "/" : "") +
                  std::string(nameOf(tag.element)) + ">",
              accepted);
}

bool PropertyListXmlCursor::skipMarkup() {
  for (;;) {
    skipSpace();
    if (startsWith("<!--")) {
      if (!skipComment()) return false;
    } else if (startsWith("<?")) {
      if (!skipInstruction()) return false;
    } else {
      return true;
    }
  }
}

bool PropertyListXmlCursor::skipComment() {
  const std::size_t start = offset();
  const std::string_view content = rest().substr(4);
  const std::size_t dashes = content.find("--");
  if (dashes == std::string_view::npos) return fail(start, "a comment is not closed", "-->");
  if (!content.substr(dashes + 2).starts_with('>')) {
    return fail(start + 4 + dashes, "\"--\" is not allowed inside a comment", "-->");
  }
  if (!checkCharacters(content.substr(0, dashes))) return false;
  _at += 4 + dashes + 3;
  return true;
}

bool PropertyListXmlCursor::skipInstruction() {
  const std::size_t start = offset();
  const std::string_view content = rest().substr(2);
  const std::size_t end = content.find("?>");
  if (end == std::string_view::npos) {
    return fail(start, "a processing instruction is not closed", "?>");
  }
  const std::string_view instruction = content.substr(0, end);
  if (instruction.empty() || !isNameCharacter(instruction.front())) {
    return fail(start, "a processing instruction has no name", "a name after <?");
  }
  if (instruction == "xml" || instruction.starts_with("xml ")) {
    return fail(start, "the XML declaration is allowed only at the very start",
                "another processing instruction");
  }
  if (!checkCharacters(instruction)) return false;
  _at += 2 + end + 2;
  return true;
}

// `text` is part of the input.
bool PropertyListXmlCursor::checkCharacters(std::string_view text) {
  const auto bad = utf::firstNonXml(text);
  if (!bad) return true;
  const char* const at = text.data() + *bad;
  const auto offset = static_cast<std::size_t>(at - _begin);
  const utf::Decoded character = utf::decode(text, *bad);
  if (character.length == 0) return fail(offset, "a byte that is not valid UTF-8", "UTF-8");
  return fail(offset, hexadecimal(character.scalar) + " is not allowed in XML",
              std::string(acceptedCharacters));
}

bool PropertyListXmlCursor::readProlog() {
  if (startsWith("\xEF\xBB\xBF")) _at += 3;
  if (startsWith("<?xml") && (_end - _at > 5 && isSpace(_at[5])) && !readDeclaration()) {
    return false;
  }
  if (!skipMisc()) return false;
  if (!startsWith("<!DOCTYPE")) return true;
  return readDocumentType() && skipMisc();
}

bool PropertyListXmlCursor::readDeclaration() {
  const std::size_t start = offset();
  const std::size_t end = rest().find("?>");
  if (end == std::string_view::npos) return fail(start, "the XML declaration is not closed", "?>");
  const std::string_view declaration = rest().substr(0, end);
  if (!checkCharacters(declaration)) return false;
  _at += end + 2;
  const std::size_t key = declaration.find("encoding");
  if (key == std::string_view::npos) return true;
  const std::size_t open = declaration.find_first_of("\"'", key);
  const std::size_t close =
      open == std::string_view::npos ? open : declaration.find(declaration[open], open + 1);
  if (close == std::string_view::npos) {
    return fail(start + key, "the encoding is not in quotes", "encoding=\"UTF-8\"");
  }
  std::string encoding(declaration.substr(open + 1, close - open - 1));
  std::transform(encoding.begin(), encoding.end(), encoding.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
  for (const char* known : {"UTF-8", "UTF8", "US-ASCII", "ASCII", "UTF-16"}) {
    if (encoding == known) return true;
  }
  return fail(start + open, "the encoding " + shortened(encoding) + " is not supported",
              "UTF-8, or UTF-16 with a byte order mark");
}

// Skips <!DOCTYPE ...>. Never fetches external files and never uses declarations.
bool PropertyListXmlCursor::readDocumentType() {
  const std::size_t start = offset();
  _at += 9;
  while (_at != _end && *_at != '>') {
    if (*_at == '[') {
      if (!readSubset()) return false;
    } else if (*_at == '"' || *_at == '\'') {
      if (!skipLiteral("the document type")) return false;
    } else if (*_at == '<' || *_at == '&') {
      return fail(offset(), "the document type is not closed", ">");
    } else if (!passOtherCharacter()) {
      return false;
    }
  }
  if (_at == _end) return fail(start, "the document type is not closed", ">");
  ++_at;
  return true;
}

bool PropertyListXmlCursor::readSubset() {
  const std::size_t start = offset();
  ++_at;
  while (skipMisc() && _at != _end && *_at != ']') {
    if (startsWith("<!ENTITY")) {
      return fail(offset(), "entity declarations are refused", "a document type without entities");
    }
    if (!startsWith("<!")) return fail(offset(), "only declarations are allowed here", "]");
    _at += 2;
    while (_at != _end && *_at != '>') {
      if (*_at == '"' || *_at == '\'') {
        if (!skipLiteral("a declaration")) return false;
      } else if (*_at == '<') {
        return fail(offset(), "the declaration is not closed", ">");
      } else if (!passOtherCharacter()) {
        return false;
      }
    }
    if (_at == _end) return failAtEnd("a declaration", ">");
    ++_at;
  }
  if (!_problem.reason.empty()) return false;
  if (_at == _end) return fail(start, "the declarations of the document type are not closed", "]");
  ++_at;
  return true;
}

// Skips quoted text.
bool PropertyListXmlCursor::skipLiteral(std::string_view inside) {
  const char* const literal = _at + 1;
  _at = std::find(literal, _end, *_at);
  if (_at == _end) return failAtEnd(inside, "the closing quote");
  if (!checkCharacters({literal, static_cast<std::size_t>(_at - literal)})) return false;
  ++_at;
  return true;
}

// Skips one character of any kind.
bool PropertyListXmlCursor::passOtherCharacter() {
  const auto byte = static_cast<unsigned char>(*_at);
  if (byte >= 0x20 && byte < 0x80) {
    ++_at;
    return true;
  }
  const utf::Decoded character = utf::decode(rest(), 0);
  if (character.length == 0 || !utf::isXmlCharacter(character.scalar)) {
    return checkCharacters(rest().substr(0, std::max<std::size_t>(character.length, 1)));
  }
  _at += character.length;
  return true;
}

bool PropertyListXmlCursor::readMixedText(const char* start, std::string_view& text) {
  _mixed.assign(start, _at);
  for (;;) {
    if (_at == _end) return failAtEnd("an element", "its end tag");
    if (*_at == '&') {
      if (!readReference()) return false;
    } else if (startsWith("<![CDATA[")) {
      if (!readCdata()) return false;
    } else if (startsWith("<!--")) {
      if (!skipComment()) return false;
    } else if (startsWith("<?")) {
      if (!skipInstruction()) return false;
    } else if (*_at == '<') {
      text = _mixed;
      return true;
    }
    const char* const piece = _at;
    if (!passPlainText()) return false;
    _mixed.append(piece, _at);
  }
}

bool PropertyListXmlCursor::readReference() {
  if (startsWith("&#")) return readCharacterReference();
  struct Named {
    std::string_view text;
    char character;
  };
  for (const Named& named : {Named{"&lt;", '<'}, Named{"&gt;", '>'}, Named{"&amp;", '&'},
                             Named{"&quot;", '"'}, Named{"&apos;", '\''}}) {
    if (startsWith(named.text)) {
      _mixed.push_back(named.character);
      _at += named.text.size();
      return true;
    }
  }
  return fail(offset(), "an unknown reference", std::string(acceptedReferences));
}

bool PropertyListXmlCursor::readCharacterReference() {
  const std::size_t start = offset();
  _at += 2;
  const bool hex = _at != _end && *_at == 'x';
  if (hex) ++_at;
  std::uint32_t scalar = 0;
  const auto result = std::from_chars(_at, _end, scalar, hex ? 16 : 10);
  if (result.ec == std::errc::invalid_argument || result.ptr == _end || *result.ptr != ';') {
    return fail(start, "a malformed character reference", std::string(acceptedReferences));
  }
  if (result.ec == std::errc::result_out_of_range || !utf::isXmlCharacter(scalar)) {
    return fail(start, "a reference to a character that is not allowed in XML",
                std::string(acceptedCharacters));
  }
  utf::append(_mixed, scalar);
  _at = result.ptr + 1;
  return true;
}

bool PropertyListXmlCursor::readCdata() {
  const std::string_view content = rest().substr(9);
  const std::size_t end = content.find("]]>");
  if (end == std::string_view::npos) return fail(offset(), "a CDATA section is not closed", "]]>");
  if (!checkCharacters(content.substr(0, end))) return false;
  _mixed.append(content.substr(0, end));
  _at += 9 + end + 3;
  return true;
}

}  // namespace platform
