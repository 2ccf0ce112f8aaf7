#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "platform/uikit/images/ImageOrientation.h"

namespace platform {

enum class ImageFormat : std::uint8_t { png, jpeg };

struct ImageHeader {
  ImageFormat format = ImageFormat::png;
  std::uint32_t width = 0;   // pixels, as shown: after the orientation is applied
  std::uint32_t height = 0;  // the same
  ImageOrientation orientation;
};

// Format and size from the first bytes of a PNG or a JPEG; nothing where the bytes are neither, or
// end before the size. The orientation is that of the Exif data, which a JPEG has before its size
// and a PNG anywhere; it is the upright one where there is none or it makes no sense. The pixels
// are not looked at.
std::optional<ImageHeader> readImageHeader(std::span<const std::uint8_t> bytes);

// Whether a file with such a header goes on to the mark of its end. Says nothing of what is
// between; the time is that of one pass over the bytes at most.
bool isWholePicture(std::span<const std::uint8_t> bytes);

}  // namespace platform
