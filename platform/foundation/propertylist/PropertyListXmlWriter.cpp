#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/propertylist/PropertyListChecks.h"
#include "platform/foundation/propertylist/PropertyListXmlForm.h"
#include "platform/foundation/text/Base64.h"
#include "platform/foundation/text/NumberText.h"
#include "platform/foundation/text/TextBuffer.h"
#include "platform/foundation/text/TextWords.h"
#include "platform/foundation/text/Utf.h"

namespace platform {
namespace {

// Data text of at least this size becomes a separate piece.
constexpr std::size_t ownPiece = std::size_t{64} * 1024;

// Marks the first byte that needs a check: a control, '<', '>', '&' or non-ASCII.
constexpr std::uint64_t specialBytes(std::uint64_t word) noexcept {
  // '<' and '>' differ in one bit.
  return words::unprintableBytes(word) | words::bytesEqualTo(word | words::ones * 2, '>') |
         words::bytesEqualTo(word, '&');
}

std::string_view escapeOf(char c) noexcept {
  switch (c) {
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '&':
      return "&amp;";
    default:
      return {};
  }
}

// Correct for signed and unsigned char.
constexpr bool isPrintableAscii(char c) noexcept {
  return c >= 0x20 && c <= 0x7E;
}

class XmlWriter {
 public:
  PropertyListPieces run(const Value& root) {
    _out->append(property_list::xmlHead);
    bool isWritten = writeValue(root, 0);
    _out->append(property_list::xmlTail);
    isWritten = isWritten && checkSize();
    if (isWritten) return finish();
    PropertyListPieces refused;
    refused.error = std::move(_error);
    return refused;
  }

 private:
  // A part of _out, or text stored elsewhere.
  struct Piece {
    std::size_t offset;
    std::size_t size;
    std::string_view foreign;
  };

  bool checkSize();
  bool writeValue(const Value& value, std::size_t indent);
  bool writeArray(const Array& array, std::size_t indent);
  bool writeDictionary(const Dictionary& dictionary, std::size_t indent);
  bool writeString(std::string_view text);
  bool writeDate(Date date);
  void writeData(const Data& data, std::size_t indent);
  bool writeText(std::string_view text);
  std::size_t passOrdinary(std::string_view text, std::size_t offset) const noexcept;
  template <class Integer>
  void writeInteger(Integer value);
  void writeReal(double value);
  bool refuse(std::string reason);
  void cut();
  PropertyListPieces finish();

  std::shared_ptr<TextBuffer> _out = std::make_shared<TextBuffer>();
  std::size_t _cut = 0;  // start of the part of _out that is not in a piece yet
  std::vector<Piece> _pieces;
  std::vector<std::shared_ptr<const void>> _keepers;
  std::size_t _foreignSize = 0;
  std::size_t _values = 0;
  std::string _error;
};

bool XmlWriter::refuse(std::string reason) {
  _error = ": " + std::move(reason);
  return false;
}

// Checked at every value, because a few shared values may expand to more than the available memory.
bool XmlWriter::checkSize() {
  const std::size_t size = _out->size() + _foreignSize;
  return size <= PropertyListLimits{}.bytes || refuse(property_list::tooLarge());
}

bool XmlWriter::writeValue(const Value& value, std::size_t indent) {
  if (++_values > PropertyListLimits{}.objects) return refuse(property_list::tooMany());
  if (!checkSize()) return false;
  _out->append(indent, '\t');
  switch (value.kind()) {
    case ValueKind::boolean:
      _out->append(value.boolValue() ? "<true/>\n" : "<false/>\n");
      return true;
    case ValueKind::integer:
      writeInteger(value.integerValue());
      return true;
    case ValueKind::unsignedInteger:
      writeInteger(value.unsignedIntegerValue());
      return true;
    case ValueKind::single:
    case ValueKind::real:
      writeReal(value.doubleValue());
      return true;
    case ValueKind::string:
      return writeString(*value.asString());
    case ValueKind::data:
      writeData(*value.asData(), indent);
      return true;
    case ValueKind::date:
      return writeDate(*value.asDate());
    case ValueKind::array:
      return writeArray(*value.asArray(), indent);
    case ValueKind::dictionary:
      return writeDictionary(*value.asDictionary(), indent);
    default:
      return refuse(property_list::whyNot(value));
  }
}

bool XmlWriter::writeArray(const Array& array, std::size_t indent) {
  if (indent >= PropertyListLimits{}.depth) return refuse(property_list::tooDeep());
  if (array.empty()) {
    _out->append("<array/>\n");
    return true;
  }
  _out->append("<array>\n");
  for (std::size_t i = 0; i < array.size(); ++i) {
    if (!writeValue(array[i], indent + 1)) {
      _error.insert(0, property_list::pathStep(i));
      return false;
    }
  }
  _out->append(indent, '\t');
  _out->append("</array>\n");
  return true;
}

bool XmlWriter::writeDictionary(const Dictionary& dictionary, std::size_t indent) {
  if (indent >= PropertyListLimits{}.depth) return refuse(property_list::tooDeep());
  if (dictionary.empty()) {
    _out->append("<dict/>\n");
    return true;
  }
  _out->append("<dict>\n");
  for (const auto& [key, value] : dictionary) {
    _out->append(indent + 1, '\t');
    _out->append("<key>");
    if (!writeText(key)) {
      _error.insert(0, property_list::pathStep(key) + ": the key");
      return false;
    }
    _out->append("</key>\n");
    if (!writeValue(value, indent + 1)) {
      _error.insert(0, property_list::pathStep(key));
      return false;
    }
  }
  _out->append(indent, '\t');
  _out->append("</dict>\n");
  return true;
}

bool XmlWriter::writeString(std::string_view text) {
  _out->append("<string>");
  if (!writeText(text)) return false;
  _out->append("</string>\n");
  return true;
}

// Returns the offset of the next byte that needs a check.
std::size_t XmlWriter::passOrdinary(std::string_view text, std::size_t offset) const noexcept {
  for (; text.size() - offset >= sizeof(std::uint64_t); offset += sizeof(std::uint64_t)) {
    const std::uint64_t special = specialBytes(words::load(text.data() + offset));
    if (special != 0) return offset + words::bytesBefore(special);
  }
  return offset;
}

bool XmlWriter::writeText(std::string_view text) {
  std::size_t written = 0;
  std::size_t offset = 0;
  while ((offset = passOrdinary(text, offset)) < text.size()) {
    const char c = text[offset];
    const std::string_view escape = escapeOf(c);
    if (!escape.empty()) {
      _out->append(text.substr(written, offset - written));
      _out->append(escape);
      written = ++offset;
    } else if (isPrintableAscii(c)) {
      ++offset;
    } else {
      const utf::Decoded character = utf::decode(text, offset);
      if (character.length == 0 || !utf::isXmlCharacter(character.scalar)) {
        return refuse(property_list::whyNot(character));
      }
      offset += character.length;
    }
  }
  _out->append(text.substr(written));
  return true;
}

template <class Integer>
void XmlWriter::writeInteger(Integer value) {
  constexpr std::size_t longest = 24;
  _out->append("<integer>");
  char* const to = _out->reserve(longest);
  _out->commit(static_cast<std::size_t>(std::to_chars(to, to + longest, value).ptr - to));
  _out->append("</integer>\n");
}

void XmlWriter::writeReal(double value) {
  _out->append("<real>");
  char* const to = _out->reserve(number_text::longestReal);
  _out->commit(number_text::formatReal(value, to));
  _out->append("</real>\n");
}

bool XmlWriter::writeDate(Date date) {
  const auto text = number_text::formatDate(date.secondsSinceReferenceDate);
  if (!text) return refuse(property_list::whyNot(date));
  _out->append("<date>");
  _out->append(*text);
  _out->append("</date>\n");
  return true;
}

void XmlWriter::writeData(const Data& data, std::size_t indent) {
  std::shared_ptr<const void> keeper;
  const std::string_view lines = data.base64Lines(indent, keeper);
  _out->append("<data>");
  if (lines.size() >= ownPiece) {
    cut();
    _foreignSize += lines.size();
    _pieces.push_back({0, lines.size(), lines});
    _keepers.push_back(std::move(keeper));
  } else {
    _out->append(lines);
  }
  _out->append("</data>\n");
}

// Ends the current piece.
void XmlWriter::cut() {
  if (_out->size() > _cut) _pieces.push_back({_cut, _out->size() - _cut, {}});
  _cut = _out->size();
}

PropertyListPieces XmlWriter::finish() {
  cut();
  PropertyListPieces result;
  result.pieces.reserve(_pieces.size());
  for (const Piece& piece : _pieces) {
    const bool foreign = piece.foreign.data() != nullptr;
    result.pieces.push_back(foreign ? piece.foreign : _out->view(piece.offset, piece.size));
  }
  result.keepers = std::move(_keepers);
  result.keepers.push_back(std::move(_out));
  return result;
}

}  // namespace

PropertyListPieces writeXmlPropertyListPieces(const Value& root) {
  PropertyListPieces pieces = XmlWriter().run(root);
  property_list::tidy(pieces.error);
  return pieces;
}

PropertyListText writeXmlPropertyList(const Value& root) {
  PropertyListPieces pieces = writeXmlPropertyListPieces(root);
  PropertyListText text;
  text.error = std::move(pieces.error);
  std::size_t size = 0;
  for (const std::string_view piece : pieces.pieces) size += piece.size();
  text.bytes.reserve(size);
  for (const std::string_view piece : pieces.pieces) text.bytes.append(piece);
  return text;
}

}  // namespace platform
