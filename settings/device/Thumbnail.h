#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/foundation/values/Collections.h"

namespace settings {

// The longer side of a thumbnail in pixels, as much as a photo in a list of many has on a screen.
inline constexpr std::uint32_t thumbnailSide = 320;

// A photo as it is shown among others.
struct Thumbnail {
  std::string key;
  std::uint32_t width = 0;  // pixels
  std::uint32_t height = 0;
};

// What the thumbnail of a photo goes by: 64 hexadecimal digits, as the hash of an image. The file
// is told from others by its name, its length and samples of its bytes, so that a library of large
// photos is not hashed as a whole.
std::string thumbnailKey(std::string_view name, const platform::Data& photo);

// The thumbnail of a photo of that size in pixels.
Thumbnail thumbnailOf(std::string key, std::uint32_t width, std::uint32_t height);

// A file (PNG or JPEG), or why there is none.
struct ThumbnailFile {
  std::string bytes;
  std::string problem;  // for people; empty where there is a file
};

// Unpacks the photo and makes it small; one that is small already stays as it is. Threads: any, one
// without a process too.
ThumbnailFile makeThumbnail(const platform::Data& photo);

}  // namespace settings
