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

// Decodes and encodes picture files. A service of the process: a device provides its own, a test
// may provide one that fails. Threads: any, concurrently.
class ImageCodecs {
 public:
  static constexpr std::size_t noLimit = std::numeric_limits<std::size_t>::max();

  virtual ~ImageCodecs() = default;
  // Decodes a PNG or JPEG to upright pixels, according to its Exif orientation. Refuses truncated
  // files, and files above the limits of ImagePixels.h before it reads any pixel. Ignores colour
  // profiles: values are treated as sRGB.
  virtual DecodedPicture decode(std::span<const std::uint8_t> file) = 0;
  // Stops when the output exceeds maximumBytes; the outcome is the same as for the whole file.
  // Equal pixels produce equal bytes.
  virtual EncodedPicture encodePng(const ImagePixels& pixels, std::size_t maximumBytes) = 0;
  // Like encodePng. quality is from 0 to 1. A JPEG has no transparency, so transparent pixels are
  // blended with white.
  virtual EncodedPicture encodeJpeg(const ImagePixels& pixels, double quality,
                                    std::size_t maximumBytes) = 0;
};

// The codecs of libpng and libjpeg-turbo. Stateless.
class LibraryImageCodecs final : public ImageCodecs {
 public:
  DecodedPicture decode(std::span<const std::uint8_t> file) override;
  EncodedPicture encodePng(const ImagePixels& pixels, std::size_t maximumBytes) override;
  EncodedPicture encodeJpeg(const ImagePixels& pixels, double quality,
                            std::size_t maximumBytes) override;
};

// Returns the codecs of the current process, or those of the libraries if none were provided.
// Threads: any.
ImageCodecs& imageCodecs();

}  // namespace platform
