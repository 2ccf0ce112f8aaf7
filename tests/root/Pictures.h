#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/uikit/images/ImageCodecs.h"

// Picture files.
namespace zentrova::tests {

inline platform::ImagePixels grayPixels(std::uint32_t width, std::uint32_t height) {
  return {width, height, std::vector<std::uint8_t>(std::size_t{4} * width * height, 0x80)};
}

inline std::string textOf(const platform::EncodedPicture& picture) {
  return {picture.bytes.begin(), picture.bytes.end()};
}

inline std::string pngOf(std::uint32_t width, std::uint32_t height) {
  platform::LibraryImageCodecs codecs;
  return textOf(codecs.encodePng(grayPixels(width, height), platform::LibraryImageCodecs::noLimit));
}

inline std::string jpegOf(std::uint32_t width, std::uint32_t height) {
  constexpr double quality = 0.5;
  platform::LibraryImageCodecs codecs;
  return textOf(
      codecs.encodeJpeg(grayPixels(width, height), quality, platform::LibraryImageCodecs::noLimit));
}

// A small PNG whose header claims a million pixels on each side.
inline std::string hugePng() {
  constexpr std::size_t widthOffset = 16;
  std::string file = pngOf(1, 1);
  return file.replace(widthOffset, 8, std::string("\x00\x0F\x42\x40\x00\x0F\x42\x40", 8));
}

}  // namespace zentrova::tests
