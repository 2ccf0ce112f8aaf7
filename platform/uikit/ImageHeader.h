#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace platform {

enum class ImageFormat : std::uint8_t { png, jpeg };

struct ImageHeader {
  ImageFormat format = ImageFormat::png;
  std::uint32_t width = 0;   // pixels
  std::uint32_t height = 0;  // pixels
};

// Format and size from the first bytes of a PNG or a JPEG; nothing where the bytes are neither, or
// end before the size. What follows is not looked at.
std::optional<ImageHeader> readImageHeader(std::span<const std::uint8_t> bytes);

}  // namespace platform
