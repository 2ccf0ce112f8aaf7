#include "appearance/BackgroundImage.h"

#include <utility>

#include "platform/uikit/images/UIImageRepresentation.h"

namespace zentrova {

using platform::BoundedRepresentation;
using platform::Data;
using platform::EncodingOutcome;
using platform::UIImage;

namespace {

// Single precision, widened, so that the last quality is just below 0.1.
constexpr auto qualityOfPng = static_cast<double>(0.9F);
constexpr auto lowestQuality = static_cast<double>(0.1F);
constexpr double qualityStep = 0.1;

// The last quality has no limit.
BoundedRepresentation encodeJpeg(const std::shared_ptr<UIImage>& picture, double quality) {
  const bool isLast = quality <= lowestQuality;
  return platform::UIImageJPEGRepresentation(
      picture, quality, isLast ? platform::ImageCodecs::noLimit : largestBackgroundImage);
}

}  // namespace

std::optional<Data> encodeBackgroundImage(const std::shared_ptr<UIImage>& picture) {
  // The picture is encoded up to nine times, so it is decoded once beforehand.
  const auto prepared = picture ? picture->imageByPreparingForDisplay() : nullptr;
  BoundedRepresentation made = platform::UIImagePNGRepresentation(prepared, largestBackgroundImage);
  double quality = qualityOfPng;
  while (made.outcome == EncodingOutcome::aboveLimit && quality > lowestQuality) {
    quality -= qualityStep;
    made = encodeJpeg(prepared, quality);
  }
  if (made.outcome != EncodingOutcome::done) return std::nullopt;
  return std::move(made.data);
}

}  // namespace zentrova
