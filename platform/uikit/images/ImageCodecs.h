#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/uikit/images/PictureResults.h"

namespace platform {

// Turns files of pictures into pixels and pixels into files. A service of the process: a device
// brings its own, a test one that fails. Threads: any, several at a time.
class ImageCodecs {
 public:
  static constexpr std::size_t noLimit = std::numeric_limits<std::size_t>::max();

  virtual ~ImageCodecs() = default;
  // A whole PNG or JPEG as the pixels that it shows, turned upright as its Exif orientation says.
  // Refuses what is cut off or above the limits of ImagePixels.h, the latter before any pixel is
  // read. Colour profiles are not looked at: the values are taken as sRGB.
  virtual DecodedPicture decode(std::span<const std::uint8_t> file) = 0;
  // Gives up as soon as more than maximumBytes are there; the outcome is the one that the whole
  // file would have had. Equal pixels give equal bytes.
  virtual EncodedPicture encodePng(const ImagePixels& pixels, std::size_t maximumBytes) = 0;
  // The same; quality from 0 to 1. A JPEG has no transparency: what shines through is white.
  virtual EncodedPicture encodeJpeg(const ImagePixels& pixels, double quality,
                                    std::size_t maximumBytes) = 0;
};

// The codecs of libpng and libjpeg-turbo. Holds nothing.
class LibraryImageCodecs final : public ImageCodecs {
 public:
  DecodedPicture decode(std::span<const std::uint8_t> file) override;
  EncodedPicture encodePng(const ImagePixels& pixels, std::size_t maximumBytes) override;
  EncodedPicture encodeJpeg(const ImagePixels& pixels, double quality,
                            std::size_t maximumBytes) override;
};

// The codecs that the current process was given, or those of the libraries. Threads: any.
ImageCodecs& imageCodecs();

}  // namespace platform
