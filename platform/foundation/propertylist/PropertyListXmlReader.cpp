#include "platform/foundation/propertylist/PropertyListXmlReader.h"

#include <cstring>
#include <utility>

#include "platform/foundation/propertylist/PropertyListXmlCursor.h"
#include "platform/foundation/propertylist/PropertyListXmlEntries.h"
#include "platform/foundation/propertylist/PropertyListXmlForm.h"
#include "platform/foundation/propertylist/ValueBuilder.h"
#include "platform/foundation/text/Base64.h"
#include "platform/foundation/text/NumberText.h"
#include "platform/foundation/values/DataStore.h"

namespace platform {
namespace {

using Tag = PropertyListXmlCursor::Tag;

constexpr std::string_view anyValue =
    "<string>, <integer>, <real>, <true/>, <false/>, <data>, <date>, <array> or <dict>";

class XmlReader {
 public:
  XmlReader(std::string_view text, std::shared_ptr<const void> keeper,
            const PropertyListLimits& limits)
      : _cursor(text), _keeper(std::move(keeper)), _limits(limits), _textSize(text.size()) {}

  PropertyListResult run() {
    PropertyListResult result;
    result.format = PropertyListFormat::xml1;
    if (readDocument()) {
      result.value = _builder.take();
      return result;
    }
    const PropertyListXmlCursor::Problem& problem = _cursor.problem();
    result.error = PropertyListError{.reason = problem.reason,
                                     .line = {},
                                     .column = {},
                                     .offset = problem.offset,
                                     .accepted = problem.accepted};
    return result;
  }

 private:
  bool readDocument();
  bool readStart();
  bool readRoot();
  bool readWrapped();
  void readPlainEntries();
  bool readItem();
  bool readOpening(const Tag& tag);
  bool readKey(const Tag& tag);
  bool readClosing(const Tag& tag);
  bool readTrailer();
  bool begin(const Tag& tag);
  bool readScalar(const Tag& tag);
  bool readString(const Tag& tag);
  bool readBoolean(const Tag& tag);
  bool readInteger();
  bool readReal();
  bool readDate();
  bool readData(const Tag& tag);
  Value dataOf(std::string_view text, const base64::Scan& scan) const;
  bool readContent(PlistElement element, std::string_view& text);
  bool count(std::size_t offset);
  bool fail(std::size_t offset, std::string reason, std::string_view accepted) {
    return _cursor.fail(offset, std::move(reason), std::string(accepted));
  }
  std::string_view acceptedHere() const;
  // Returns how many bytes may be read from the start of a piece of the input or of joined text.
  std::size_t readable(std::string_view piece) const noexcept {
    const std::string_view rest = _cursor.rest();
    const bool inside = piece.data() + piece.size() == rest.data();
    return inside ? piece.size() + rest.size() : piece.size();
  }

  PropertyListXmlCursor _cursor;
  ValueBuilder _builder;
  std::shared_ptr<const void> _keeper;
  const PropertyListLimits& _limits;
  std::size_t _textSize;
  std::size_t _objects = 0;
  bool _wrapped = false;  // in <plist>
};

std::string_view XmlReader::acceptedHere() const {
  if (_builder.depth() == 0) return _wrapped || _builder.complete() ? anyValue : "<plist>";
  if (_builder.expectsKey()) return "<key> or </dict>";
  return _builder.inDictionary() ? anyValue
                                 : "<string>, <integer>, <real>, <true/>, <false/>, <data>, "
                                   "<date>, <array>, <dict> or </array>";
}

bool XmlReader::readDocument() {
  if (!readStart()) return false;
  while (!_builder.complete()) {
    if (_builder.expectsKey()) readPlainEntries();
    if (!_cursor.skipMisc() || !readItem()) return false;
  }
  return readTrailer();
}

// Reads everything before the root's content.
bool XmlReader::readStart() {
  // Fast path: nearly every file begins with the same lines.
  if (!_cursor.rest().starts_with(property_list::xmlHead)) {
    return _cursor.readProlog() && readRoot();
  }
  _cursor.advance(property_list::xmlHead.size());
  return readWrapped();
}

// Reads <plist>, which is optional, and the root's start tag.
bool XmlReader::readRoot() {
  Tag tag;
  if (_cursor.atEnd()) return fail(_cursor.offset(), "there is no property list", "<plist>");
  if (!_cursor.readTag(tag, [] { return "<plist>"; })) return false;
  if (tag.element != PlistElement::plist || tag.closing) return readOpening(tag);
  if (tag.empty) return fail(tag.offset, "the property list holds no value", "<plist>");
  return readWrapped();
}

// Reads the root's start tag inside <plist>.
bool XmlReader::readWrapped() {
  Tag tag;
  _wrapped = true;
  if (!_cursor.skipMisc() || !_cursor.readTag(tag, [] { return anyValue; })) return false;
  if (tag.element == PlistElement::plist && tag.closing) {
    return fail(tag.offset, "the property list holds no value", anyValue);
  }
  return readOpening(tag);
}

void XmlReader::readPlainEntries() {
  const std::string_view rest = _cursor.rest();
  PropertyListXmlEntries entries(rest, _builder);
  const char* const next = entries.read(rest.data(), _limits.objects - _objects);
  _objects += entries.count();
  _cursor.advance(static_cast<std::size_t>(next - rest.data()));
}

bool XmlReader::readItem() {
  Tag tag;
  if (!_cursor.readTag(tag, [this] { return acceptedHere(); })) return false;
  return tag.closing ? readClosing(tag) : readOpening(tag);
}

bool XmlReader::readOpening(const Tag& tag) {
  if (tag.closing) return readClosing(tag);
  if (tag.element == PlistElement::key) return readKey(tag);
  if (tag.element == PlistElement::plist) {
    return fail(tag.offset, "<plist> is allowed only around the root", acceptedHere());
  }
  if (_builder.expectsKey()) {
    return fail(tag.offset, "a value without a key: <" + std::string(nameOf(tag.element)) + ">",
                "<key> or </dict>");
  }
  if (!count(tag.offset)) return false;
  if (tag.element == PlistElement::array || tag.element == PlistElement::dict) return begin(tag);
  return readScalar(tag);
}

bool XmlReader::readKey(const Tag& tag) {
  if (!_builder.expectsKey()) {
    return fail(tag.offset,
                _builder.inDictionary() ? "a key without a value is followed by another"
                                        : "<key> is allowed only in <dict>",
                acceptedHere());
  }
  if (tag.empty) {
    _builder.pushKeyText({}, 0);
    return true;
  }
  std::string_view text;
  if (!readContent(PlistElement::key, text)) return false;
  _builder.pushKeyText(text, readable(text));
  return _cursor.readEndTag<PlistElement::key>();
}

bool XmlReader::readClosing(const Tag& tag) {
  const bool dictionary = _builder.inDictionary();
  const PlistElement open = dictionary ? PlistElement::dict : PlistElement::array;
  if (_builder.depth() == 0 || tag.element != open) {
    const std::string found = "</" + std::string(nameOf(tag.element)) + ">";
    if (_builder.depth() == 0) {
      return fail(tag.offset, found + " has no start tag", acceptedHere());
    }
    const std::string expected = "</" + std::string(nameOf(open)) + ">";
    return fail(tag.offset, "expected " + expected + ", found " + found, acceptedHere());
  }
  if (dictionary && !_builder.expectsKey()) {
    return fail(tag.offset, "the last key of <dict> has no value", anyValue);
  }
  _builder.end();
  return true;
}

bool XmlReader::readTrailer() {
  if (_wrapped) {
    if (!_cursor.skipMisc() || !_cursor.readEndTag<PlistElement::plist>()) return false;
  }
  if (!_cursor.skipMisc()) return false;
  if (_cursor.atEnd()) return true;
  return fail(_cursor.offset(), "unexpected content after the end of the property list",
              "the end of the text");
}

bool XmlReader::begin(const Tag& tag) {
  if (_builder.depth() >= _limits.depth) {
    const std::string limit = std::to_string(_limits.depth) + " deep";
    return fail(tag.offset, "containers are nested more than " + limit + ", which is the limit",
                "at most " + limit);
  }
  tag.element == PlistElement::dict ? _builder.beginDictionary() : _builder.beginArray();
  if (tag.empty) _builder.end();
  return true;
}

bool XmlReader::count(std::size_t offset) {
  if (++_objects <= _limits.objects) return true;
  const std::string limit = std::to_string(_limits.objects) + " values";
  return fail(offset, "more than " + limit + ", which is the limit", "at most " + limit);
}

bool XmlReader::readScalar(const Tag& tag) {
  switch (tag.element) {
    case PlistElement::string:
      return readString(tag);
    case PlistElement::booleanTrue:
    case PlistElement::booleanFalse:
      return readBoolean(tag);
    case PlistElement::data:
      return readData(tag);
    default:
      break;
  }
  if (tag.empty) {
    const std::string name(nameOf(tag.element));
    return fail(tag.offset, "<" + name + "/> has no content", "<" + name + ">...</" + name + ">");
  }
  if (tag.element == PlistElement::integer) return readInteger();
  return tag.element == PlistElement::real ? readReal() : readDate();
}

bool XmlReader::readContent(PlistElement element, std::string_view& text) {
  if (_cursor.readText(text)) return true;
  if (_cursor.problem().offset != _textSize) return false;
  const std::string end = "</" + std::string(nameOf(element)) + ">";
  return fail(_textSize, "the text ends before " + end, end);
}

bool XmlReader::readString(const Tag& tag) {
  if (tag.empty) {
    _builder.pushText({}, 0);
    return true;
  }
  std::string_view text;
  if (!readContent(PlistElement::string, text)) return false;
  _builder.pushText(text, readable(text));
  return _cursor.readEndTag<PlistElement::string>();
}

bool XmlReader::readBoolean(const Tag& tag) {
  _builder.push(tag.element == PlistElement::booleanTrue);
  if (tag.empty) return true;
  return _cursor.skipMisc() && _cursor.readAnyEndTag(tag.element);
}

bool XmlReader::readInteger() {
  const std::size_t start = _cursor.offset();
  std::string_view text;
  if (!readContent(PlistElement::integer, text)) return false;
  number_text::Integer number;
  const auto problem = number_text::parseInteger(text, number);
  constexpr std::string_view accepted =
      "decimal or 0x and hexadecimal digits with an optional sign, from -2^63 to 2^64-1";
  if (problem == number_text::IntegerProblem::malformed) {
    return fail(start, "<integer> does not contain an integer", accepted);
  }
  if (problem == number_text::IntegerProblem::outOfRange) {
    return fail(start, "the integer is outside -2^63 to 2^64-1", accepted);
  }
  if (number.negative) {
    _builder.push(static_cast<std::int64_t>(0 - number.magnitude));
  } else {
    _builder.push(number.magnitude);
  }
  return _cursor.readEndTag<PlistElement::integer>();
}

bool XmlReader::readReal() {
  const std::size_t start = _cursor.offset();
  std::string_view text;
  if (!readContent(PlistElement::real, text)) return false;
  const auto number = number_text::parseReal(text);
  if (!number) {
    return fail(start, "<real> does not contain a number",
                "a decimal number, nan, inf or infinity with an optional sign");
  }
  _builder.push(*number);
  return _cursor.readEndTag<PlistElement::real>();
}

bool XmlReader::readDate() {
  const std::size_t start = _cursor.offset();
  std::string_view text;
  if (!readContent(PlistElement::date, text)) return false;
  const auto seconds = number_text::parseDate(text);
  if (!seconds) return fail(start, "<date> does not contain a date", "YYYY-MM-DDTHH:MM:SSZ");
  _builder.push(Date{*seconds});
  return _cursor.readEndTag<PlistElement::date>();
}

bool XmlReader::readData(const Tag& tag) {
  if (tag.empty) {
    _builder.push(Data());
    return true;
  }
  const std::string_view rest = _cursor.rest();
  const base64::Scan scan = base64::scan(rest);
  if (scan.length == rest.size()) {
    return fail(_textSize, "the text ends before </data>", "</data>");
  }
  if (scan.problem != nullptr) {
    return fail(_cursor.offset() + scan.length, scan.problem,
                "A to Z, a to z, 0 to 9, +, /, = at the end, and white space");
  }
  _builder.push(dataOf(rest.substr(0, scan.length), scan));
  _cursor.advance(scan.length);
  return _cursor.readEndTag<PlistElement::data>();
}

Value XmlReader::dataOf(std::string_view text, const base64::Scan& scan) const {
  // Decoding short data is as fast as storing its text.
  constexpr std::size_t shortText = 256;
  if (text.size() < shortText) {
    std::vector<std::uint8_t> bytes(scan.size + base64::decodeSlack);
    base64::decode(text, bytes.data());
    bytes.resize(scan.size);
    return Data(std::move(bytes));
  }
  // Sharing the whole text saves memory only if the data is a large part of it.
  if (_keeper && text.size() >= _textSize / 4) {
    return Data::fromBase64({_keeper, text, scan.indent}, scan.size);
  }
  auto copy = std::make_shared<const std::string>(text);
  const std::string_view copied = *copy;
  return Data::fromBase64({std::move(copy), copied, scan.indent}, scan.size);
}

}  // namespace

PropertyListResult readXmlPropertyList(std::string_view text, std::shared_ptr<const void> keeper,
                                       const PropertyListLimits& limits) {
  return XmlReader(text, std::move(keeper), limits).run();
}

}  // namespace platform
