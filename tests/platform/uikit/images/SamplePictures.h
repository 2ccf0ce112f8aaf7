#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/uikit/images/ImagePixels.h"

// Picture files, including kinds that our encoders do not write.
namespace uikit_test {

using Bytes = std::vector<std::uint8_t>;

inline Bytes bytesOf(std::string_view text) {
  return {text.begin(), text.end()};
}

enum class PngColors : std::uint8_t { grey, greyAlpha, rgb, rgba, palette };

struct PngKind {
  PngColors colors = PngColors::rgba;
  int bitDepth = 8;
  bool interlaced = false;
};

// Makes a PNG from packed rows in the format of the kind (16-bit samples with the high byte first;
// the palette has the entries 0: red, 1: half transparent green, 2: blue).
Bytes makePng(PngKind kind, std::uint32_t width, std::uint32_t height, const Bytes& rows);

// Inserts a chunk with a correct checksum after the header.
Bytes withChunk(const Bytes& png, std::string_view name, const Bytes& content);

// Makes a signature, a header with that size, and an end, without pixels in between.
Bytes pngThatPromises(std::uint32_t width, std::uint32_t height);

enum class JpegColors : std::uint8_t { grey, rgb, cmyk, ycck };

struct JpegKind {
  JpegColors colors = JpegColors::rgb;
  bool progressive = false;
};

// Makes a JPEG of the best quality from rows in the format of the colours (one, three or four bytes
// per pixel; ink as in print: 255 is full).
Bytes makeJpeg(JpegKind kind, std::uint32_t width, std::uint32_t height, const Bytes& rows);

// Inserts a segment after the start.
Bytes withSegment(const Bytes& jpeg, std::uint8_t marker, const Bytes& content);

// Returns Exif data (without the file's marker) with the orientation.
Bytes exifOf(std::uint8_t orientation, bool bigEndian = true);
// Returns the same data as a JPEG segment.
Bytes jpegExifOf(std::uint8_t orientation);

// Returns pixels that cannot be compressed; the same for equal seeds.
platform::ImagePixels noise(std::uint32_t width, std::uint32_t height, std::uint32_t seed = 1);

// Returns the four bytes of a pixel as "RRGGBBAA".
std::string pixelAt(const platform::ImagePixels& pixels, std::uint32_t x, std::uint32_t y);

}  // namespace uikit_test
