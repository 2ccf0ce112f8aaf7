#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/foundation/values/Collections.h"

namespace settings {

// The longer side of a thumbnail in pixels: enough for a photo in a grid on a screen.
inline constexpr std::uint32_t thumbnailSide = 320;

// The small version of a photo that a picker shows.
struct Thumbnail {
  std::string key;
  std::uint32_t width = 0;  // pixels
  std::uint32_t height = 0;
};

// The key of a photo's thumbnail: 64 hexadecimal digits, the same form as the hash of an image. It
// is computed from the file's name, its length and samples of its bytes, so that a library of large
// photos need not be hashed completely.
std::string thumbnailKey(std::string_view name, const platform::Data& photo);

// The thumbnail of a photo with this size in pixels.
Thumbnail thumbnailOf(std::string key, std::uint32_t width, std::uint32_t height);

// A file (PNG or JPEG), or an error.
struct ThumbnailFile {
  std::string bytes;
  std::string problem;  // for the user; empty if there is a file
};

// Decompresses the photo and scales it down. A photo that is small enough is returned as it is.
// Threads: any, also without a process.
ThumbnailFile makeThumbnail(const platform::Data& photo);

}  // namespace settings
