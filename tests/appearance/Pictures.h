#pragma once

#include <cstdint>
#include <memory>
#include <random>

#include "platform/uikit/images/UIImage.h"
#include "platform/uikit/images/UIImageRepresentation.h"

namespace zentrova::tests {

// A picture of one colour.
inline std::shared_ptr<platform::UIImage> plainPicture(std::uint32_t width, std::uint32_t height) {
  platform::ImagePixels pixels{width, height, {}};
  for (std::uint64_t i = 0; i < std::uint64_t{width} * height; ++i) {
    pixels.rgba.insert(pixels.rgba.end(), {200, 30, 40, 255});
  }
  return platform::UIImage::imageWithPixels(std::move(pixels), 1);
}

// A picture that hardly compresses: as PNG it takes about three bytes per pixel.
inline std::shared_ptr<platform::UIImage> noisyPicture(std::uint32_t side) {
  platform::ImagePixels pixels{side, side, {}};
  std::minstd_rand random(7);
  for (std::uint64_t i = 0; i < std::uint64_t{side} * side; ++i) {
    const auto value = static_cast<std::uint32_t>(random());
    pixels.rgba.insert(pixels.rgba.end(),
                       {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8U),
                        static_cast<std::uint8_t>(value >> 16U), 255});
  }
  return platform::UIImage::imageWithPixels(std::move(pixels), 1);
}

// A picture of 2 x 2 pixels as a file.
inline platform::Data smallPicture() {
  return *platform::UIImagePNGRepresentation(plainPicture(2, 2));
}

inline bool isPng(const platform::Data& data) {
  return data.size() > 4 && data.bytes()[0] == 0x89 && data.bytes()[1] == 'P';
}
inline bool isJpeg(const platform::Data& data) {
  return data.size() > 4 && data.bytes()[0] == 0xFF && data.bytes()[1] == 0xD8;
}

}  // namespace zentrova::tests
