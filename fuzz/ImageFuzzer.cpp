// Decodes any bytes as a picture. They are refused with a reason, or the picture has the size in
// its header, survives a round trip as PNG, and can be written as a JPEG of the same size.
#include <cstddef>
#include <cstdint>
#include <span>

#include "fuzz/FuzzChecks.h"
#include "platform/uikit/images/ImageCodecs.h"
#include "platform/uikit/images/ImageHeader.h"

namespace {

using fuzzing::require;
using platform::ImageCodecs;
using platform::ImagePixels;

// Larger pictures would only take longer.
constexpr std::uint64_t mostPixels = 1U << 18U;

void checkWritten(ImageCodecs& codecs, const ImagePixels& pixels) {
  const auto png = codecs.encodePng(pixels, ImageCodecs::noLimit);
  require(png.outcome == platform::EncodingOutcome::done, "no PNG: " + png.problem);
  const auto again = codecs.decode(png.bytes);
  require(again.pixels != nullptr, "the PNG is refused: " + again.problem);
  require(again.pixels->rgba == pixels.rgba, "the PNG shows something else");
  const auto jpeg = codecs.encodeJpeg(pixels, 0.5, ImageCodecs::noLimit);
  require(jpeg.outcome == platform::EncodingOutcome::done, "no JPEG: " + jpeg.problem);
  const auto header = platform::readImageHeader(jpeg.bytes);
  require(header && header->width == pixels.width && header->height == pixels.height,
          "the JPEG has another size");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span<const std::uint8_t> file(data, size);
  const auto header = platform::readImageHeader(file);
  const bool whole = platform::isWholePicture(file);
  if (header && std::uint64_t{header->width} * header->height > mostPixels) return 0;
  platform::LibraryImageCodecs codecs;
  const auto picture = codecs.decode(file);
  require((picture.pixels == nullptr) == !picture.problem.empty(), "neither pixels nor a reason");
  if (!picture.pixels) return 0;
  require(header.has_value(), "pixels without a header");
  require(whole, "pixels of a file that ends too early");
  require(header->width == picture.pixels->width && header->height == picture.pixels->height,
          "another size than promised");
  checkWritten(codecs, *picture.pixels);
  return 0;
}
