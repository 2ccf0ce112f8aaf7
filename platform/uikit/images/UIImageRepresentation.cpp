#include "platform/uikit/images/UIImageRepresentation.h"

#include "platform/foundation/objects/NSLog.h"
#include "platform/uikit/images/UIImage.h"

namespace platform {
namespace {

using Encode = EncodedPicture (*)(const ImagePixels&, double quality, std::size_t maximumBytes);

EncodedPicture encodePng(const ImagePixels& pixels, double /*quality*/, std::size_t maximumBytes) {
  return imageCodecs().encodePng(pixels, maximumBytes);
}

EncodedPicture encodeJpeg(const ImagePixels& pixels, double quality, std::size_t maximumBytes) {
  return imageCodecs().encodeJpeg(pixels, quality, maximumBytes);
}

BoundedRepresentation represent(const std::shared_ptr<UIImage>& image, Encode encode,
                                double quality, std::size_t maximumBytes) {
  const auto pixels = image ? image->decodedPixels() : nullptr;
  if (!pixels) return {};
  EncodedPicture picture = encode(*pixels, quality, maximumBytes);
  if (picture.outcome == EncodingOutcome::failed) {
    NSLog("An image cannot be encoded: %@", {picture.problem});
  }
  return {picture.outcome, Data(std::move(picture.bytes))};
}

std::optional<Data> wholeOf(BoundedRepresentation representation) {
  if (representation.outcome != EncodingOutcome::done) return std::nullopt;
  return std::move(representation.data);
}

}  // namespace

std::optional<Data> UIImagePNGRepresentation(const std::shared_ptr<UIImage>& image) {
  return wholeOf(UIImagePNGRepresentation(image, ImageCodecs::noLimit));
}

std::optional<Data> UIImageJPEGRepresentation(const std::shared_ptr<UIImage>& image,
                                              double quality) {
  return wholeOf(UIImageJPEGRepresentation(image, quality, ImageCodecs::noLimit));
}

BoundedRepresentation UIImagePNGRepresentation(const std::shared_ptr<UIImage>& image,
                                               std::size_t maximumBytes) {
  return represent(image, encodePng, 0, maximumBytes);
}

BoundedRepresentation UIImageJPEGRepresentation(const std::shared_ptr<UIImage>& image,
                                                double quality, std::size_t maximumBytes) {
  return represent(image, encodeJpeg, quality, maximumBytes);
}

}  // namespace platform
