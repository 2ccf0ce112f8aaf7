#include "platform/uikit/images/ImageCodecs.h"

#include <new>

#include "platform/foundation/objects/Process.h"
#include "platform/uikit/images/ImageHeader.h"
#include "platform/uikit/images/PictureFormats.h"

namespace platform {
namespace {

constexpr const char* noMemory = "There is not enough memory for the picture.";

// Returns nothing if the pixels can be encoded.
std::optional<std::string> refusalOfPixels(const ImagePixels& pixels) {
  if (auto refusal = refusalOfImageSize(pixels.width, pixels.height)) return refusal;
  if (pixels.rgba.size() == bytesPerPixel * pixels.width * pixels.height) return std::nullopt;
  return "The pixels do not fill the picture.";
}

}  // namespace

DecodedPicture LibraryImageCodecs::decode(std::span<const std::uint8_t> file) try {
  const auto header = readImageHeader(file);
  if (!header) return {nullptr, "The file is neither a PNG nor a JPEG, or has no pixels."};
  if (const auto refusal = refusalOfImageSize(header->width, header->height)) {
    return {nullptr, *refusal};
  }
  return header->format == ImageFormat::png ? decodePngFile(file, *header)
                                            : decodeJpegFile(file, *header);
} catch (const std::bad_alloc&) {
  return {nullptr, noMemory};
}

EncodedPicture LibraryImageCodecs::encodePng(const ImagePixels& pixels,
                                             std::size_t maximumBytes) try {
  if (const auto refusal = refusalOfPixels(pixels)) return {EncodingOutcome::failed, {}, *refusal};
  return encodePngFile(pixels, maximumBytes);
} catch (const std::bad_alloc&) {
  return {EncodingOutcome::failed, {}, noMemory};
}

EncodedPicture LibraryImageCodecs::encodeJpeg(const ImagePixels& pixels, double quality,
                                              std::size_t maximumBytes) try {
  if (const auto refusal = refusalOfPixels(pixels)) return {EncodingOutcome::failed, {}, *refusal};
  return encodeJpegFile(pixels, quality, maximumBytes);
} catch (const std::bad_alloc&) {
  return {EncodingOutcome::failed, {}, noMemory};
}

ImageCodecs& imageCodecs() {
  Process& process = Process::current();
  if (const auto provided = process.serviceOrNull<ImageCodecs>()) return *provided;
  return process.once<LibraryImageCodecs>();
}

}  // namespace platform
