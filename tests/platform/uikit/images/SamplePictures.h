#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/uikit/images/ImagePixels.h"

// Files of pictures, also of kinds that our own encoders do not write.
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

// A PNG of packed rows as the kind has them (16-bit samples with the high byte first; a palette has
// the entries 0: red, 1: half transparent green, 2: blue).
Bytes makePng(PngKind kind, std::uint32_t width, std::uint32_t height, const Bytes& rows);

// With one more chunk behind the header. The check sum is right.
Bytes withChunk(const Bytes& png, std::string_view name, const Bytes& content);

// The signature and a header that promises the size, and the end, with no pixels between.
Bytes pngThatPromises(std::uint32_t width, std::uint32_t height);

enum class JpegColors : std::uint8_t { grey, rgb, cmyk, ycck };

struct JpegKind {
  JpegColors colors = JpegColors::rgb;
  bool progressive = false;
};

// A JPEG of the best quality, of rows as the colours have them (one, three or four bytes a pixel;
// ink as in print: 255 is all).
Bytes makeJpeg(JpegKind kind, std::uint32_t width, std::uint32_t height, const Bytes& rows);

// With one more segment behind the start.
Bytes withSegment(const Bytes& jpeg, std::uint8_t marker, const Bytes& content);

// Exif data (without what marks it in a file) that tells the orientation.
Bytes exifOf(std::uint8_t orientation, bool bigEndian = true);
// The same as a JPEG's segment has it.
Bytes jpegExifOf(std::uint8_t orientation);

// Pixels that no encoder makes small; the same for the same seed.
platform::ImagePixels noise(std::uint32_t width, std::uint32_t height, std::uint32_t seed = 1);

// The four bytes of a pixel as "RRGGBBAA".
std::string pixelAt(const platform::ImagePixels& pixels, std::uint32_t x, std::uint32_t y);

}  // namespace uikit_test
