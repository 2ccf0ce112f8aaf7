#include "platform/uikit/images/ImageHeader.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

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

std::optional<ImageHeader> sized(ImageFormat format, std::uint32_t width, std::uint32_t height,
                                 ImageOrientation orientation) {
  if (width == 0 || height == 0) return std::nullopt;
  if (orientation.swapsSides()) std::swap(width, height);
  return ImageHeader{format, width, height, orientation};
}

constexpr std::array<std::uint8_t, 8> pngSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
constexpr std::array<std::uint8_t, 3> jpegStart = {0xFF, 0xD8, 0xFF};

struct PngChunk {
  std::string_view name;
  Bytes content;
};

// Removes the next chunk (length, name, content, checksum) of a PNG and returns it; empty if the
// data ends inside of it.
std::optional<PngChunk> takeChunk(Bytes& rest) {
  constexpr std::size_t frame = 12;
  if (rest.size() < frame) return std::nullopt;
  const std::size_t length = bigEndian(rest, 0, 4);
  if (length > rest.size() - frame) return std::nullopt;
  const PngChunk chunk{{reinterpret_cast<const char*>(rest.data()) + 4, 4},
                       rest.subspan(8, length)};
  rest = rest.subspan(frame + length);
  return chunk;
}

ImageOrientation pngOrientation(Bytes bytes) {
  Bytes rest = bytes.subspan(pngSignature.size());
  while (const auto chunk = takeChunk(rest)) {
    if (chunk->name == "eXIf") return ImageOrientation::fromExif(chunk->content);
  }
  return {};
}

// Reads the signature and the chunk IHDR: length, name, width, height.
std::optional<ImageHeader> readPng(Bytes bytes) {
  constexpr std::size_t sizeOffset = 16;
  constexpr std::array<std::uint8_t, 4> name = {'I', 'H', 'D', 'R'};
  if (bytes.size() < sizeOffset + 8 || !startsWith(bytes.subspan(12), name)) return std::nullopt;
  return sized(ImageFormat::png, bigEndian(bytes, sizeOffset, 4),
               bigEndian(bytes, sizeOffset + 4, 4), pngOrientation(bytes));
}

bool isWholePng(Bytes bytes) {
  Bytes rest = bytes.subspan(pngSignature.size());
  while (const auto chunk = takeChunk(rest)) {
    if (chunk->name == "IEND") return true;
  }
  return false;
}

// Returns whether the marker is a start of frame: 0xC0 to 0xCF, except for three markers with
// another meaning.
bool isStartOfFrame(std::uint8_t marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

struct JpegSegment {
  std::uint8_t marker = 0;
  Bytes content;  // the available part
};

// Removes the next segment (marker, length, content) of a JPEG and returns it; empty if there is no
// marker.
std::optional<JpegSegment> takeSegment(Bytes& rest) {
  // Skip fill bytes.
  while (rest.size() > 1 && rest[0] == 0xFF && rest[1] == 0xFF) rest = rest.subspan(1);
  if (rest.size() < 4 || rest[0] != 0xFF) return std::nullopt;
  const std::size_t length = std::max(bigEndian(rest, 2, 2), 2U);
  const JpegSegment segment{rest[1], rest.subspan(4, std::min(length - 2, rest.size() - 4))};
  rest = rest.subspan(std::min(2 + length, rest.size()));
  return segment;
}

ImageOrientation jpegOrientation(const JpegSegment& segment) {
  constexpr std::array<std::uint8_t, 6> mark = {'E', 'x', 'i', 'f', 0, 0};
  if (!startsWith(segment.content, mark)) return {};
  return ImageOrientation::fromExif(segment.content.subspan(mark.size()));
}

// Reads segments up to the start of the frame, which contains precision, height and width.
std::optional<ImageHeader> readJpeg(Bytes bytes) {
  constexpr std::uint8_t exifMarker = 0xE1;
  ImageOrientation orientation;
  Bytes rest = bytes.subspan(2);
  while (const auto segment = takeSegment(rest)) {
    if (isStartOfFrame(segment->marker)) {
      if (segment->content.size() < 5) return std::nullopt;
      return sized(ImageFormat::jpeg, bigEndian(segment->content, 3, 2),
                   bigEndian(segment->content, 1, 2), orientation);
    }
    if (segment->marker == exifMarker && orientation.exifValue() == 1) {
      orientation = jpegOrientation(*segment);
    }
  }
  return std::nullopt;
}

// Skips the segments before the start of the frame, because a picture may contain a thumbnail.
// After it, the end marker cannot occur elsewhere: in scan data, 0xFF is never followed by 0xD9.
bool isWholeJpeg(Bytes bytes) {
  constexpr std::string_view end = "\xFF\xD9";
  Bytes rest = bytes.subspan(2);
  while (const auto segment = takeSegment(rest)) {
    if (!isStartOfFrame(segment->marker)) continue;
    const std::string_view scans(reinterpret_cast<const char*>(rest.data()), rest.size());
    return scans.find(end) != std::string_view::npos;
  }
  return false;
}

}  // namespace

std::optional<ImageHeader> readImageHeader(Bytes bytes) {
  if (startsWith(bytes, pngSignature)) return readPng(bytes);
  if (startsWith(bytes, jpegStart)) return readJpeg(bytes);
  return std::nullopt;
}

bool isWholePicture(Bytes bytes) {
  if (startsWith(bytes, pngSignature)) return isWholePng(bytes);
  return startsWith(bytes, jpegStart) && isWholeJpeg(bytes);
}

}  // namespace platform
