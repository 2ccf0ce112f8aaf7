#include "platform/uikit/ImageHeader.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace platform {
namespace {

using Bytes = std::span<const std::uint8_t>;

std::uint32_t bigEndian(Bytes bytes, std::size_t offset, std::size_t count) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < count; ++i) value = value << 8U | bytes[offset + i];
  return value;
}

bool startsWith(Bytes bytes, Bytes start) {
  return bytes.size() >= start.size() && std::equal(start.begin(), start.end(), bytes.begin());
}

std::optional<ImageHeader> sized(ImageFormat format, std::uint32_t width, std::uint32_t height) {
  if (width == 0 || height == 0) return std::nullopt;
  return ImageHeader{format, width, height};
}

// Signature, then the chunk IHDR: length, name, width, height.
std::optional<ImageHeader> readPng(Bytes bytes) {
  constexpr std::size_t sizeOffset = 16;
  constexpr std::array<std::uint8_t, 4> name = {'I', 'H', 'D', 'R'};
  if (bytes.size() < sizeOffset + 8 || !startsWith(bytes.subspan(12), name)) return std::nullopt;
  return sized(ImageFormat::png, bigEndian(bytes, sizeOffset, 4),
               bigEndian(bytes, sizeOffset + 4, 4));
}

// The start of a frame: 0xC0 to 0xCF but for the three other uses of that range.
bool isStartOfFrame(std::uint8_t marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

// Segments follow each other, each a marker and its length, until the start of the frame, which
// holds precision, height and width.
std::optional<ImageHeader> readJpeg(Bytes bytes) {
  std::size_t offset = 2;
  while (offset + 9 <= bytes.size() && bytes[offset] == 0xFF) {
    const std::uint8_t marker = bytes[offset + 1];
    if (marker == 0xFF) {
      ++offset;  // a fill byte before a marker
      continue;
    }
    if (isStartOfFrame(marker)) {
      return sized(ImageFormat::jpeg, bigEndian(bytes, offset + 7, 2),
                   bigEndian(bytes, offset + 5, 2));
    }
    offset += 2 + std::max(bigEndian(bytes, offset + 2, 2), 2U);
  }
  return std::nullopt;
}

}  // namespace

std::optional<ImageHeader> readImageHeader(Bytes bytes) {
  constexpr std::array<std::uint8_t, 8> png = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  constexpr std::array<std::uint8_t, 3> jpeg = {0xFF, 0xD8, 0xFF};
  if (startsWith(bytes, png)) return readPng(bytes);
  if (startsWith(bytes, jpeg)) return readJpeg(bytes);
  return std::nullopt;
}

}  // namespace platform
