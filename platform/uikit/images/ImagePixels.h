#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform {

inline constexpr std::size_t bytesPerPixel = 4;

// Pixels of an image: rows from the top, four bytes per pixel (red, green, blue, alpha, not
// premultiplied).
struct ImagePixels {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::vector<std::uint8_t> rgba;
};

// The largest picture that is read, drawn or written. The side is limited to that of a JPEG, so
// that every picture can be written in either format; the area limits pixels to 400 MB.
inline constexpr std::uint32_t maximumImageSide = 65500;
inline constexpr std::uint64_t maximumImagePixels = 100'000'000;

// Returns the reason why a picture of that size in pixels is refused, as a sentence for the user;
// empty if it is within the limits.
std::optional<std::string> refusalOfImageSize(std::uint64_t width, std::uint64_t height);

}  // namespace platform
