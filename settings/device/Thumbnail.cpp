#include "settings/device/Thumbnail.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "platform/uikit/images/ImageCodecs.h"
#include "platform/uikit/images/ImageScaler.h"
#include "platform/uikit/images/Sha256.h"

namespace settings {
namespace {

using platform::ImageCodecs;
using platform::ImagePixels;

constexpr double thumbnailQuality = 0.8;
constexpr std::size_t sampleBytes = 16UL * 1024;

// One side of the thumbnail: at least 1 pixel, however narrow the picture is.
std::uint32_t scaledSide(std::uint32_t side, std::uint32_t longer) {
  const double scaled = std::round(static_cast<double>(side) * thumbnailSide / longer);
  return std::max(1U, static_cast<std::uint32_t>(scaled));
}

ImagePixels scaledDown(const ImagePixels& whole) {
  const auto [key, width, height] = thumbnailOf({}, whole.width, whole.height);
  ImagePixels small{width, height, {}};
  small.rgba.resize(platform::bytesPerPixel * width * height);
  platform::drawScaled(whole, {0, 0, static_cast<double>(width), static_cast<double>(height)},
                       small);
  return small;
}

bool isOpaque(const ImagePixels& pixels) {
  constexpr std::size_t alpha = 3;
  for (std::size_t at = alpha; at < pixels.rgba.size(); at += platform::bytesPerPixel) {
    if (pixels.rgba[at] != 0xFF) return false;
  }
  return true;
}

ThumbnailFile fileOf(const platform::EncodedPicture& picture) {
  return {{picture.bytes.begin(), picture.bytes.end()}, picture.problem};
}

// JPEG is smaller but has no transparency.
ThumbnailFile encode(const ImagePixels& pixels) {
  platform::LibraryImageCodecs codecs;
  return fileOf(isOpaque(pixels) ? codecs.encodeJpeg(pixels, thumbnailQuality, ImageCodecs::noLimit)
                                 : codecs.encodePng(pixels, ImageCodecs::noLimit));
}

}  // namespace

std::string thumbnailKey(std::string_view name, const platform::Data& photo) {
  const auto bytes = photo.bytes();
  const std::size_t sample = std::min(bytes.size(), sampleBytes);
  platform::Sha256 hash;
  hash.add("thumbnail " + std::to_string(bytes.size()) + " " + std::string(name) + "\n");
  hash.add(bytes.first(sample));
  hash.add(bytes.subspan((bytes.size() - sample) / 2, sample));
  hash.add(bytes.last(sample));
  return hash.finish();
}

Thumbnail thumbnailOf(std::string key, std::uint32_t width, std::uint32_t height) {
  const std::uint32_t longer = std::max({width, height, thumbnailSide});
  return {std::move(key), scaledSide(width, longer), scaledSide(height, longer)};
}

ThumbnailFile makeThumbnail(const platform::Data& photo) {
  const platform::DecodedPicture decoded = platform::LibraryImageCodecs().decode(photo.bytes());
  if (!decoded.pixels) return {{}, decoded.problem};
  const bool isSmall = std::max(decoded.pixels->width, decoded.pixels->height) <= thumbnailSide;
  if (isSmall) return {{photo.bytes().begin(), photo.bytes().end()}, {}};
  return encode(scaledDown(*decoded.pixels));
}

}  // namespace settings
