#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "platform/uikit/images/ImageOrientation.h"

namespace platform {

enum class ImageFormat : std::uint8_t { png, jpeg };

struct ImageHeader {
  ImageFormat format = ImageFormat::png;
  std::uint32_t width = 0;   // in pixels, after the orientation is applied
  std::uint32_t height = 0;  // the same
  ImageOrientation orientation;
};

// Reads format and size from the first bytes of a PNG or JPEG; empty if the data is neither or ends
// before the size. The orientation comes from the Exif data, which a JPEG has before its size and a
// PNG anywhere; it is upright if missing or invalid. Does not read the pixels.
std::optional<ImageHeader> readImageHeader(std::span<const std::uint8_t> bytes);

// Returns whether the file with this header contains its end marker. Does not check the data before
// it. Takes at most one pass over the bytes.
bool isWholePicture(std::span<const std::uint8_t> bytes);

}  // namespace platform
