#include "platform/uikit/images/ImageOrientation.h"

namespace platform {
namespace {

using Bytes = std::span<const std::uint8_t>;

// Reads numbers in the byte order of the data. Offsets must be in range.
class TiffReader {
 public:
  TiffReader(Bytes bytes, bool bigEndian) : _bytes(bytes), _bigEndian(bigEndian) {}
  std::uint32_t number(std::size_t offset, std::size_t count) const {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < count; ++i) {
      value = value << 8U | _bytes[offset + (_bigEndian ? i : count - 1 - i)];
    }
    return value;
  }

 private:
  Bytes _bytes;
  bool _bigEndian;
};

constexpr std::size_t headerSize = 8;
constexpr std::size_t entrySize = 12;

// Searches the first directory. An entry has a tag, a type, a count and a value.
std::uint32_t orientationIn(Bytes tiff, const TiffReader& reader) {
  constexpr std::uint32_t orientationTag = 0x112;
  constexpr std::uint32_t shortType = 3;
  const std::size_t list = reader.number(4, 4);
  if (list < headerSize || list + 2 > tiff.size()) return 0;
  const std::size_t entries = reader.number(list, 2);
  for (std::size_t i = 0; i < entries; ++i) {
    const std::size_t entry = list + 2 + i * entrySize;
    if (entry + entrySize > tiff.size()) return 0;
    if (reader.number(entry, 2) != orientationTag) continue;
    return reader.number(entry + 2, 2) == shortType ? reader.number(entry + 8, 2) : 0;
  }
  return 0;
}

}  // namespace

ImageOrientation ImageOrientation::fromExifValue(std::uint32_t value) noexcept {
  ImageOrientation orientation;
  if (value >= 1 && value <= 8) orientation._value = static_cast<std::uint8_t>(value);
  return orientation;
}

ImageOrientation ImageOrientation::fromExif(Bytes tiff) noexcept {
  constexpr std::uint32_t magic = 42;
  if (tiff.size() < headerSize || tiff[0] != tiff[1]) return {};
  if (tiff[0] != 'M' && tiff[0] != 'I') return {};
  const TiffReader reader(tiff, tiff[0] == 'M');
  if (reader.number(2, 2) != magic) return {};
  return fromExifValue(orientationIn(tiff, reader));
}

PixelPlacement PixelPlacement::of(ImageOrientation orientation, std::uint32_t storedWidth,
                                  std::uint32_t storedHeight) noexcept {
  const std::ptrdiff_t width = storedWidth;
  const std::ptrdiff_t height = storedHeight;
  switch (orientation.exifValue()) {
    case 2:
      return {width - 1, -1, width};
    case 3:
      return {width * height - 1, -1, -width};
    case 4:
      return {width * (height - 1), 1, -width};
    case 5:
      return {0, height, 1};
    case 6:
      return {height - 1, height, -1};
    case 7:
      return {width * height - 1, -height, -1};
    case 8:
      return {height * (width - 1), -height, 1};
    default:
      return {0, 1, width};
  }
}

}  // namespace platform
