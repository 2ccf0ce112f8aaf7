#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/foundation/propertylist/PropertyListBinary.h"
#include "platform/foundation/propertylist/PropertyListChecks.h"
#include "platform/foundation/text/TextWords.h"
#include "platform/foundation/text/Utf.h"
#include "platform/foundation/values/Collections.h"

namespace platform {
namespace {

using namespace binary_property_list;

void appendNumber(std::string& out, std::uint64_t value, std::size_t width) {
  for (std::size_t i = width; i > 0; --i) out.push_back(static_cast<char>(value >> (8 * (i - 1))));
}

// Returns the width for the value: 1, 2, 4 or 8 bytes.
std::size_t widthOf(std::uint64_t value) noexcept {
  if (value <= 0xFF) return 1;
  if (value <= 0xFFFF) return 2;
  return value <= 0xFFFFFFFF ? 4 : 8;
}

char firstByte(Marker marker, std::size_t low) noexcept {
  return static_cast<char>((static_cast<unsigned>(marker) << 4U) | static_cast<unsigned>(low));
}

void appendInteger(std::string& out, std::uint64_t value) {
  const std::size_t width = widthOf(value);
  out.push_back(firstByte(Marker::integer, static_cast<std::size_t>(std::countr_zero(width))));
  appendNumber(out, value, width);
}

void appendHead(std::string& out, Marker marker, std::size_t size) {
  out.push_back(firstByte(marker, std::min<std::size_t>(size, sizeFollows)));
  if (size >= sizeFollows) appendInteger(out, size);
}

// Numbers every object, equal scalars once, and then writes them in that order.
class BinaryWriter {
 public:
  PropertyListText run(const Value& root) {
    PropertyListText text;
    std::size_t top = 0;
    if (collect(root, 0, top)) text.bytes = encode(top);
    if (text.bytes.size() > PropertyListLimits{}.bytes) refuse(property_list::tooLarge());
    if (_error.empty()) return text;
    text.bytes.clear();
    text.error = std::move(_error);
    property_list::tidy(text.error);
    return text;
  }

 private:
  // The bytes of a scalar, or the marker of a container and its references: keys, then values.
  struct Item {
    std::string scalar;
    Marker marker = Marker::simple;
    std::vector<std::size_t> references;
  };

  bool collect(const Value& value, std::size_t depth, std::size_t& index);
  bool collectArray(const Array& array, std::size_t depth, std::size_t index);
  bool collectDictionary(const Dictionary& dictionary, std::size_t depth, std::size_t index);
  bool collectString(std::string_view text, std::size_t& index);
  bool encodeScalar(const Value& value, std::string& out);
  bool encodeString(std::string_view text, std::string& out);
  bool countContent(std::size_t size);
  std::size_t unique(std::string scalar);
  std::string encode(std::size_t top) const;
  void appendItem(std::string& out, const Item& item, std::size_t referenceWidth) const;
  bool refuse(std::string reason) {
    _error = ": " + std::move(reason);
    return false;
  }

  std::vector<Item> _items;
  std::unordered_map<std::string, std::size_t> _scalars;
  std::size_t _values = 0;
  std::size_t _content = 0;  // bytes of text and data; duplicates count each time, as in the reader
  std::string _error;
};

bool BinaryWriter::collect(const Value& value, std::size_t depth, std::size_t& index) {
  if (++_values > PropertyListLimits{}.objects) return refuse(property_list::tooMany());
  const bool container = value.asArray() != nullptr || value.asDictionary() != nullptr;
  if (container && depth >= PropertyListLimits{}.depth) return refuse(property_list::tooDeep());
  if (const Array* array = value.asArray()) {
    index = _items.size();
    _items.push_back({{}, Marker::array, {}});
    return collectArray(*array, depth + 1, index);
  }
  if (const Dictionary* dictionary = value.asDictionary()) {
    index = _items.size();
    _items.push_back({{}, Marker::dictionary, {}});
    return collectDictionary(*dictionary, depth + 1, index);
  }
  std::string scalar;
  if (!encodeScalar(value, scalar)) return false;
  index = unique(std::move(scalar));
  return true;
}

bool BinaryWriter::collectArray(const Array& array, std::size_t depth, std::size_t index) {
  std::vector<std::size_t> references(array.size());
  for (std::size_t i = 0; i < array.size(); ++i) {
    if (!collect(array[i], depth, references[i])) {
      _error.insert(0, property_list::pathStep(i));
      return false;
    }
  }
  _items[index].references = std::move(references);
  return true;
}

bool BinaryWriter::collectDictionary(const Dictionary& dictionary, std::size_t depth,
                                     std::size_t index) {
  const std::size_t size = dictionary.size();
  std::vector<std::size_t> references(2 * size);
  std::size_t i = 0;
  for (const auto& [key, value] : dictionary) {
    if (!collectString(key, references[i])) {
      _error.insert(0, property_list::pathStep(key) + ": the key");
      return false;
    }
    if (!collect(value, depth, references[size + i])) {
      _error.insert(0, property_list::pathStep(key));
      return false;
    }
    ++i;
  }
  _items[index].references = std::move(references);
  return true;
}

bool BinaryWriter::collectString(std::string_view text, std::size_t& index) {
  std::string scalar;
  if (!encodeString(text, scalar)) return false;
  index = unique(std::move(scalar));
  return true;
}

bool BinaryWriter::encodeScalar(const Value& value, std::string& out) {
  switch (value.kind()) {
    case ValueKind::boolean:
      out.push_back(static_cast<char>(value.boolValue() ? trueByte : falseByte));
      return true;
    case ValueKind::integer:
      appendInteger(out, value.unsignedIntegerValue());
      return true;
    case ValueKind::unsignedInteger:
      out.push_back(firstByte(Marker::integer, 4));
      appendNumber(out, 0, 8);
      appendNumber(out, value.unsignedIntegerValue(), 8);
      return true;
    case ValueKind::single:
      out.push_back(firstByte(Marker::real, 2));
      appendNumber(out, std::bit_cast<std::uint32_t>(value.floatValue()), 4);
      return true;
    case ValueKind::real:
      out.push_back(firstByte(Marker::real, 3));
      appendNumber(out, std::bit_cast<std::uint64_t>(value.doubleValue()), 8);
      return true;
    case ValueKind::string:
      return encodeString(*value.asString(), out);
    case ValueKind::data: {
      if (!countContent(value.asData()->size())) return false;
      const auto bytes = value.asData()->bytes();
      appendHead(out, Marker::data, bytes.size());
      out.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
      return true;
    }
    case ValueKind::date:
      if (!std::isfinite(value.asDate()->secondsSinceReferenceDate)) {
        return refuse("a date that is not a finite number of seconds");
      }
      out.push_back(static_cast<char>(dateByte));
      appendNumber(out, std::bit_cast<std::uint64_t>(value.asDate()->secondsSinceReferenceDate), 8);
      return true;
    default:
      return refuse(property_list::whyNot(value));
  }
}

bool BinaryWriter::countContent(std::size_t size) {
  _content += size;
  return _content <= PropertyListLimits{}.bytes || refuse(property_list::tooLarge());
}

bool BinaryWriter::encodeString(std::string_view text, std::string& out) {
  if (words::isAscii(text)) {
    if (!countContent(text.size())) return false;
    appendHead(out, Marker::ascii, text.size());
    out.append(text);
    return true;
  }
  for (std::size_t offset = 0; offset < text.size();) {
    const utf::Decoded character = utf::decode(text, offset);
    if (character.length == 0 || utf::isSurrogate(character.scalar)) {
      return refuse(property_list::whyNot(character));
    }
    offset += character.length;
  }
  const std::string units = utf::toUtf16BigEndian(text);
  if (!countContent(units.size())) return false;
  appendHead(out, Marker::utf16, units.size() / 2);
  out.append(units);
  return true;
}

std::size_t BinaryWriter::unique(std::string scalar) {
  const auto [found, added] = _scalars.try_emplace(scalar, _items.size());
  if (added) _items.push_back({std::move(scalar), Marker::simple, {}});
  return found->second;
}

void BinaryWriter::appendItem(std::string& out, const Item& item,
                              std::size_t referenceWidth) const {
  if (item.marker == Marker::simple) {
    out.append(item.scalar);
    return;
  }
  const bool dictionary = item.marker == Marker::dictionary;
  appendHead(out, item.marker, item.references.size() / (dictionary ? 2 : 1));
  for (const std::size_t reference : item.references) appendNumber(out, reference, referenceWidth);
}

std::string BinaryWriter::encode(std::size_t top) const {
  std::string out(magic);
  const std::size_t referenceWidth = widthOf(_items.size() - 1);
  std::vector<std::size_t> offsets;
  offsets.reserve(_items.size());
  for (const Item& item : _items) {
    offsets.push_back(out.size());
    appendItem(out, item, referenceWidth);
  }
  const std::size_t table = out.size();
  const std::size_t offsetWidth = widthOf(table);
  for (const std::size_t offset : offsets) appendNumber(out, offset, offsetWidth);
  out.append(6, '\0');
  out.push_back(static_cast<char>(offsetWidth));
  out.push_back(static_cast<char>(referenceWidth));
  appendNumber(out, _items.size(), 8);
  appendNumber(out, top, 8);
  appendNumber(out, table, 8);
  return out;
}

}  // namespace

PropertyListText writeBinaryPropertyList(const Value& root) {
  return BinaryWriter().run(root);
}

}  // namespace platform
