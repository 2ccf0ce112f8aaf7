#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "platform/foundation/propertylist/PropertyListBinary.h"
#include "platform/foundation/propertylist/ValueBuilder.h"
#include "platform/foundation/text/TextWords.h"
#include "platform/foundation/text/Utf.h"

namespace platform {
namespace {

using namespace binary_property_list;

// Reads a big-endian number of 1 to 8 bytes. It must start before the last eight bytes of the
// trailer, so that eight bytes can be read.
std::uint64_t number(std::string_view bytes, std::size_t offset, std::size_t width) noexcept {
  return words::loadBigEndian(bytes.data() + offset) >> (64 - 8 * width);
}

struct Trailer {
  std::size_t offsetWidth = 0;
  std::size_t referenceWidth = 0;
  std::uint64_t count = 0;
  std::uint64_t top = 0;
  std::uint64_t table = 0;  // offset of the offset table, which is the end of the objects
};

// The head of an object: its type, its size and the start of its content.
struct Head {
  Marker marker{};
  std::uint8_t low = 0;
  std::size_t count = 0;
  std::size_t content = 0;
  std::size_t offset = 0;
};

class BinaryReader {
 public:
  BinaryReader(std::string_view bytes, std::shared_ptr<const void> keeper,
               const PropertyListLimits& limits)
      : _bytes(bytes), _keeper(std::move(keeper)), _limits(limits) {}

  PropertyListResult run();

 private:
  // A container that is being read.
  struct Frame {
    std::size_t object;
    std::size_t references;  // where the references begin
    std::size_t count;       // elements, or keys
    std::size_t next = 0;
    bool dictionary = false;
    std::size_t objectsBefore = 0;
    std::size_t contentBefore = 0;
    std::size_t height = 1;  // levels of nesting so far, including itself
  };
  // The result of an object that took more than a few bytes, for later references to it.
  struct Known {
    Value value;
    std::size_t objects;
    std::size_t content;  // bytes of text and data
    std::size_t height;
  };
  // An object number and the place of the reference in the file.
  struct Reference {
    std::size_t object;
    std::size_t offset;
  };
  static constexpr std::uint32_t inProgress = std::numeric_limits<std::uint32_t>::max();

  bool readTrailer();
  bool checkTrailer(std::size_t at);
  bool readAll();
  bool step();
  void finishContainer();
  bool readObject(const Reference& reference, bool asKey);
  bool reuse(const Known& known, std::size_t offset, bool asKey);
  bool readHead(std::size_t object, Head& head);
  bool readSize(Head& head);
  bool checkExtent(const Head& head, std::size_t unit);
  bool begin(std::size_t object, const Head& head);
  bool readScalar(std::size_t object, const Head& head, bool asKey);
  bool readSimple(const Head& head);
  bool readInteger(const Head& head);
  bool readReal(const Head& head);
  bool readDate(const Head& head);
  bool readAscii(const Head& head, bool asKey);
  bool readUtf16(const Head& head, bool asKey);
  Value dataOf(std::string_view bytes) const;
  void push(Value&& value, bool asKey);
  bool count(std::size_t objects, std::size_t content, std::size_t offset);
  Reference referenceAt(const Frame& frame, std::size_t index) const noexcept;
  void remember(std::size_t object, std::size_t objects, std::size_t content, std::size_t height);
  bool fail(std::size_t offset, std::string reason, std::string accepted);
  bool failAsTooMany(std::size_t offset, const std::string& counted);
  bool failAsTooDeep(std::size_t offset);

  std::string_view _bytes;
  std::shared_ptr<const void> _keeper;
  const PropertyListLimits& _limits;
  Trailer _trailer;
  ValueBuilder _builder;
  std::vector<Frame> _frames;
  // by object number: 0, inProgress, or an index into _known plus 1
  std::vector<std::uint32_t> _knownIndex;
  std::vector<Known> _known;
  std::size_t _objects = 0;
  std::size_t _content = 0;
  PropertyListError _error;
};

bool BinaryReader::fail(std::size_t offset, std::string reason, std::string accepted) {
  _error = {std::move(reason), {}, {}, offset, std::move(accepted)};
  return false;
}

bool BinaryReader::failAsTooMany(std::size_t offset, const std::string& counted) {
  const std::string limit = std::to_string(_limits.objects) + " values";
  return fail(offset, "more than " + limit + counted + ", which is the limit", "at most " + limit);
}

bool BinaryReader::failAsTooDeep(std::size_t offset) {
  const std::string limit = std::to_string(_limits.depth) + " deep";
  return fail(offset, "containers are nested more than " + limit + ", which is the limit",
              "at most " + limit);
}

PropertyListResult BinaryReader::run() {
  PropertyListResult result;
  result.format = PropertyListFormat::binary1;
  if (readTrailer() && readAll()) {
    result.value = _builder.take();
  } else {
    result.error = std::move(_error);
  }
  return result;
}

bool BinaryReader::readTrailer() {
  if (_bytes.size() < magic.size() + trailerSize + 2) {
    return fail(_bytes.size(), "the file is too short for a binary property list",
                "at least 42 bytes");
  }
  const std::size_t at = _bytes.size() - trailerSize;
  _trailer.offsetWidth = static_cast<unsigned char>(_bytes[at + 6]);
  _trailer.referenceWidth = static_cast<unsigned char>(_bytes[at + 7]);
  _trailer.count = number(_bytes, at + 8, 8);
  _trailer.top = number(_bytes, at + 16, 8);
  _trailer.table = number(_bytes, at + 24, 8);
  return checkTrailer(at);
}

bool BinaryReader::checkTrailer(std::size_t at) {
  const auto covers = [](std::size_t width, std::uint64_t highest) {
    return width >= 8 || highest < (std::uint64_t{1} << (8 * width));
  };
  if (_trailer.offsetWidth < 1 || _trailer.offsetWidth > 8) {
    return fail(at + 6, "the trailer's width of offsets is wrong", "1 to 8 bytes");
  }
  if (_trailer.referenceWidth < 1 || _trailer.referenceWidth > 8) {
    return fail(at + 7, "the trailer's width of references is wrong", "1 to 8 bytes");
  }
  if (_trailer.count == 0) return fail(at + 8, "the trailer counts no objects", "1 or more");
  if (_trailer.top >= _trailer.count) {
    return fail(at + 16, "the trailer's top object is out of range",
                "0 to " + std::to_string(_trailer.count - 1));
  }
  if (_trailer.table <= magic.size() || _trailer.table >= at) {
    return fail(
        at + 24, "the trailer's offset table lies outside the file",
        "an offset from " + std::to_string(magic.size() + 1) + " to " + std::to_string(at - 1));
  }
  const std::size_t tableSize = at - _trailer.table;
  if (tableSize % _trailer.offsetWidth != 0 || tableSize / _trailer.offsetWidth != _trailer.count) {
    return fail(at + 8, "the offset table does not fill the room before the trailer",
                std::to_string(tableSize / _trailer.offsetWidth) + " objects");
  }
  if (!covers(_trailer.referenceWidth, _trailer.count - 1)) {
    return fail(at + 7, "the width of references is too small for the number of objects",
                "bytes that hold " + std::to_string(_trailer.count - 1));
  }
  if (!covers(_trailer.offsetWidth, _trailer.table - 1)) {
    return fail(at + 6, "the width of offsets is too small for the file",
                "bytes that hold " + std::to_string(_trailer.table - 1));
  }
  // Each value may have a key.
  if ((_trailer.count - 1) / 2 > _limits.objects) return failAsTooMany(at + 8, " and their keys");
  return true;
}

bool BinaryReader::readAll() {
  _knownIndex.resize(_trailer.count);
  constexpr std::size_t topInTrailer = 16;
  const Reference top{_trailer.top, _bytes.size() - trailerSize + topInTrailer};
  if (!readObject(top, false)) return false;
  while (!_frames.empty()) {
    if (!step()) return false;
  }
  return true;
}

BinaryReader::Reference BinaryReader::referenceAt(const Frame& frame,
                                                  std::size_t index) const noexcept {
  const std::size_t offset = frame.references + index * _trailer.referenceWidth;
  return {number(_bytes, offset, _trailer.referenceWidth), offset};
}

// Reads the next element, or the next key and value, of the innermost container.
bool BinaryReader::step() {
  Frame& frame = _frames.back();
  if (frame.next == frame.count) {
    finishContainer();
    return true;
  }
  const std::size_t index = frame.next++;
  if (!frame.dictionary) return readObject(referenceAt(frame, index), false);
  const Reference value = referenceAt(frame, frame.count + index);
  return readObject(referenceAt(frame, index), true) && readObject(value, false);
}

void BinaryReader::finishContainer() {
  const Frame frame = _frames.back();
  _frames.pop_back();
  _builder.end();
  remember(frame.object, _objects - frame.objectsBefore, _content - frame.contentBefore,
           frame.height);
  if (!_frames.empty()) {
    _frames.back().height = std::max(_frames.back().height, frame.height + 1);
  }
}

// Remembers the value pushed last.
void BinaryReader::remember(std::size_t object, std::size_t objects, std::size_t content,
                            std::size_t height) {
  _known.push_back({_builder.last(), objects, content, height});
  _knownIndex[object] = static_cast<std::uint32_t>(_known.size());
}

// Shared objects count each time, because a writer or viewer of the list also visits them each
// time.
bool BinaryReader::count(std::size_t objects, std::size_t content, std::size_t offset) {
  if (objects > _limits.objects - _objects) {
    return failAsTooMany(offset, " when shared ones are counted each time");
  }
  if (content > _limits.bytes - _content) {
    const std::string limit = std::to_string(_limits.bytes) + " bytes of text and data";
    return fail(
        offset,
        "more than " + limit + " when shared ones are counted each time, which is the limit",
        "at most " + limit);
  }
  _objects += objects;
  _content += content;
  return true;
}

bool BinaryReader::readObject(const Reference& reference, bool asKey) {
  const std::size_t object = reference.object;
  if (object >= _trailer.count) {
    return fail(reference.offset,
                "a reference to object " + std::to_string(object) + ", which does not exist",
                "0 to " + std::to_string(_trailer.count - 1));
  }
  const std::uint32_t known = _knownIndex[object];
  if (known != 0 && known != inProgress) return reuse(_known[known - 1], reference.offset, asKey);
  Head head;
  if (!readHead(object, head)) return false;
  if (known == inProgress)
    return fail(head.offset, "a container that contains itself", "other objects");
  if (!asKey && !count(1, 0, head.offset)) return false;
  const bool container = head.marker == Marker::array || head.marker == Marker::dictionary;
  const bool text = head.marker == Marker::ascii || head.marker == Marker::utf16;
  if (asKey && !text) return fail(head.offset, "a key that is not a string", "a string");
  return container ? begin(object, head) : readScalar(object, head, asKey);
}

// A shared object is not read again, but counts as if it had been.
bool BinaryReader::reuse(const Known& known, std::size_t offset, bool asKey) {
  if (asKey && !known.value.isString()) {
    return fail(offset, "a key that is not a string", "a string");
  }
  if (!count(asKey ? 0 : known.objects, known.content, offset)) return false;
  if (_frames.size() + known.height > _limits.depth) return failAsTooDeep(offset);
  _frames.back().height = std::max(_frames.back().height, known.height + 1);
  push(Value(known.value), asKey);
  return true;
}

void BinaryReader::push(Value&& value, bool asKey) {
  if (asKey) {
    _builder.pushKey(std::move(value));
  } else {
    _builder.push(std::move(value));
  }
}

bool BinaryReader::readHead(std::size_t object, Head& head) {
  const std::size_t entry = _trailer.table + object * _trailer.offsetWidth;
  const std::uint64_t offset = number(_bytes, entry, _trailer.offsetWidth);
  if (offset < magic.size() || offset >= _trailer.table) {
    return fail(entry,
                "the offset of object " + std::to_string(object) + " lies outside the objects",
                "an offset from " + std::to_string(magic.size()) + " to " +
                    std::to_string(_trailer.table - 1));
  }
  const auto byte = static_cast<unsigned char>(_bytes[offset]);
  head.offset = offset;
  head.marker = static_cast<Marker>(byte >> 4U);
  head.low = byte & 0x0FU;
  head.count = head.low;
  head.content = offset + 1;
  switch (head.marker) {
    case Marker::simple:
    case Marker::integer:
    case Marker::real:
    case Marker::date:
      return true;
    case Marker::data:
    case Marker::ascii:
    case Marker::utf16:
    case Marker::array:
    case Marker::dictionary:
      return head.low != sizeFollows || readSize(head);
  }
  return fail(offset, "an object of unknown type " + std::to_string(byte),
              "boolean, integer, real, date, data, string, array or dictionary");
}

// Reads the size from the integer object after the first byte.
bool BinaryReader::readSize(Head& head) {
  const std::size_t at = head.content;
  const unsigned byte = at < _trailer.table ? static_cast<unsigned char>(_bytes[at]) : 0U;
  const std::size_t width = std::size_t{1} << (byte & 0x0FU);
  if (byte >> 4U != static_cast<unsigned>(Marker::integer) || width > 8 ||
      _trailer.table - at <= width) {
    return fail(at, "the size of an object is not a valid integer",
                "an integer of 1, 2, 4 or 8 bytes");
  }
  head.count = number(_bytes, at + 1, width);
  head.content = at + 1 + width;
  return true;
}

bool BinaryReader::checkExtent(const Head& head, std::size_t unit) {
  if (head.content <= _trailer.table && head.count <= (_trailer.table - head.content) / unit) {
    return true;
  }
  return fail(head.offset, "an object extends beyond the end of the objects",
              "an end at byte " + std::to_string(_trailer.table) + " at the latest");
}

bool BinaryReader::begin(std::size_t object, const Head& head) {
  const bool dictionary = head.marker == Marker::dictionary;
  if (!checkExtent(head, _trailer.referenceWidth * (dictionary ? 2 : 1))) return false;
  if (_frames.size() >= _limits.depth) {
    return failAsTooDeep(head.offset);
  }
  dictionary ? _builder.beginDictionary() : _builder.beginArray();
  _knownIndex[object] = inProgress;
  _frames.push_back({object, head.content, head.count, 0, dictionary, _objects - 1, _content, 1});
  return true;
}

bool BinaryReader::readScalar(std::size_t object, const Head& head, bool asKey) {
  switch (head.marker) {
    case Marker::simple:
      return readSimple(head);
    case Marker::integer:
      return readInteger(head);
    case Marker::real:
      return readReal(head);
    case Marker::date:
      return readDate(head);
    case Marker::data:
      if (!checkExtent(head, 1)) return false;
      _builder.push(dataOf(_bytes.substr(head.content, head.count)));
      break;
    default:
      if (!(head.marker == Marker::ascii ? readAscii(head, asKey) : readUtf16(head, asKey))) {
        return false;
      }
  }
  // Otherwise, a file could make many copies of a long text or large data with one byte each.
  // Shorter content is stored inside the value, and reading it again is as fast as a lookup.
  constexpr std::size_t shortContent = 30;
  const auto text = _builder.last().asString();
  // The size in the file, so that a file without shared objects never reaches the limit.
  const std::size_t size = head.count * (head.marker == Marker::utf16 ? 2 : 1);
  if ((text ? text->size() : head.count) > shortContent) remember(object, 1, size, 0);
  return count(0, size, head.offset);
}

Value BinaryReader::dataOf(std::string_view bytes) const {
  // Sharing the whole file saves memory only if the data is a large part of it.
  if (!_keeper || bytes.size() < _bytes.size() / 4) return Data(bytes);
  return Data::sharing(_keeper, bytes);
}

bool BinaryReader::readSimple(const Head& head) {
  if (head.low != falseByte && head.low != trueByte) {
    return fail(head.offset, "null or fill, which a property list cannot hold", "true or false");
  }
  _builder.push(head.low == trueByte);
  return true;
}

bool BinaryReader::readInteger(const Head& head) {
  if (head.low > 4) return fail(head.offset, "an integer of unknown width", "1 to 16 bytes");
  const std::size_t width = std::size_t{1} << head.low;
  Head extent = head;
  extent.count = width;
  if (!checkExtent(extent, 1)) return false;
  // Integers of up to four bytes are unsigned, those of eight and sixteen bytes are signed.
  const std::uint64_t low =
      number(_bytes, head.content + (width == 16 ? 8 : 0), std::min<std::size_t>(width, 8));
  if (width < 16) {
    _builder.push(static_cast<std::int64_t>(low));
    return true;
  }
  const std::uint64_t high = number(_bytes, head.content, 8);
  const bool negative = low >> 63U != 0;
  if (high == 0) {
    _builder.push(low);
  } else if (high == ~std::uint64_t{0} && negative) {
    _builder.push(static_cast<std::int64_t>(low));
  } else {
    return fail(head.offset, "the integer is outside -2^63 to 2^64-1", "-2^63 to 2^64-1");
  }
  return true;
}

bool BinaryReader::readReal(const Head& head) {
  if (head.low != 2 && head.low != 3) {
    return fail(head.offset, "a real of unknown width", "4 or 8 bytes");
  }
  Head extent = head;
  extent.count = std::size_t{1} << head.low;
  if (!checkExtent(extent, 1)) return false;
  const std::uint64_t bits = number(_bytes, head.content, extent.count);
  push(head.low == 2 ? Value::single(std::bit_cast<float>(static_cast<std::uint32_t>(bits)))
                     : Value::real(std::bit_cast<double>(bits)),
       false);
  return true;
}

bool BinaryReader::readDate(const Head& head) {
  if (head.low != (dateByte & 0x0FU))
    return fail(head.offset, "a date of unknown width", "8 bytes");
  Head extent = head;
  extent.count = 8;
  if (!checkExtent(extent, 1)) return false;
  const auto seconds = std::bit_cast<double>(number(_bytes, head.content, 8));
  if (!std::isfinite(seconds)) {
    return fail(head.offset, "a date that is not a finite number of seconds", "a finite number");
  }
  _builder.push(Date{seconds});
  return true;
}

bool BinaryReader::readAscii(const Head& head, bool asKey) {
  if (!checkExtent(head, 1)) return false;
  const std::string_view text = _bytes.substr(head.content, head.count);
  if (!words::isAscii(text))
    return fail(head.offset, "an ASCII string with a byte that is not ASCII", "bytes up to 0x7F");
  const std::size_t readable = _bytes.size() - head.content;
  if (asKey) {
    _builder.pushKeyText(text, readable);
  } else {
    _builder.pushText(text, readable);
  }
  return true;
}

bool BinaryReader::readUtf16(const Head& head, bool asKey) {
  if (!checkExtent(head, 2)) return false;
  const utf::FromUtf16 text =
      utf::fromUtf16(_bytes.substr(head.content, head.count * 2), utf::ByteOrder::big);
  if (text.badOffset) {
    return fail(head.content + *text.badOffset, "an unpaired surrogate", "surrogates in pairs");
  }
  push(Value::string(text.text), asKey);
  return true;
}

}  // namespace

PropertyListResult readBinaryPropertyList(std::string_view bytes,
                                          std::shared_ptr<const void> keeper,
                                          const PropertyListLimits& limits) {
  return BinaryReader(bytes, std::move(keeper), limits).run();
}

}  // namespace platform
