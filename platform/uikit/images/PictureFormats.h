#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/uikit/images/ImageHeader.h"
#include "platform/uikit/images/PictureResults.h"

// The two formats of LibraryImageCodecs. Threads: any, concurrently. If memory runs out, they throw
// std::bad_alloc without leaks.
namespace platform {

// The header must be that of the file, with a size within the limits.
DecodedPicture decodePngFile(std::span<const std::uint8_t> file, const ImageHeader& header);
DecodedPicture decodeJpegFile(std::span<const std::uint8_t> file, const ImageHeader& header);

EncodedPicture encodePngFile(const ImagePixels& pixels, std::size_t maximumBytes);
EncodedPicture encodeJpegFile(const ImagePixels& pixels, double quality, std::size_t maximumBytes);

}  // namespace platform
