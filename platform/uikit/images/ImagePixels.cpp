#include "platform/uikit/images/ImagePixels.h"

namespace platform {

std::optional<std::string> refusalOfImageSize(std::uint64_t width, std::uint64_t height) {
  if (width == 0 || height == 0) return "The picture has no pixels.";
  const std::string size = std::to_string(width) + " x " + std::to_string(height) + " pixels";
  if (width > maximumImageSide || height > maximumImageSide) {
    return "The picture has " + size + "; a side may have at most " +
           std::to_string(maximumImageSide) + ".";
  }
  if (width * height > maximumImagePixels) {
    return "The picture has " + size + "; at most " +
           std::to_string(maximumImagePixels / 1'000'000) + " million pixels are read.";
  }
  return std::nullopt;
}

}  // namespace platform
