// The pictures that a new device tree holds, as files.

#include "platform/uikit/images/ImageCodecs.h"
#include "settings/device/Painting.h"

namespace settings {

namespace {

using platform::ImageCodecs;

platform::ImagePixels pixelsOf(const Canvas& canvas) {
  return {static_cast<std::uint32_t>(canvas.width()), static_cast<std::uint32_t>(canvas.height()),
          canvas.pixels()};
}

std::string fileOf(const platform::EncodedPicture& picture) {
  return {picture.bytes.begin(), picture.bytes.end()};
}

}  // namespace

std::string encodePng(const Canvas& canvas) {
  return fileOf(platform::LibraryImageCodecs().encodePng(pixelsOf(canvas), ImageCodecs::noLimit));
}

std::string encodeJpeg(const Canvas& canvas, double quality) {
  return fileOf(
      platform::LibraryImageCodecs().encodeJpeg(pixelsOf(canvas), quality, ImageCodecs::noLimit));
}

}  // namespace settings
