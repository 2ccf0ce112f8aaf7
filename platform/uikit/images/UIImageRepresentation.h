#pragma once

#include <cstddef>
#include <memory>
#include <optional>

#include "platform/foundation/values/Collections.h"
#include "platform/uikit/images/ImageCodecs.h"

namespace platform {

class UIImage;

// Encodes the image as a file. None for an empty pointer or a symbol, and for an image that cannot
// be decoded or encoded, which is also logged. To encode an image repeatedly, prepare it once with
// UIImage::imageByPreparingForDisplay. Equal pixels produce equal bytes. Threads: any.
std::optional<Data> UIImagePNGRepresentation(const std::shared_ptr<UIImage>& image);
// quality is from 0 (smallest) to 1 (best) and is clamped. Transparent pixels become white.
std::optional<Data> UIImageJPEGRepresentation(const std::shared_ptr<UIImage>& image,
                                              double quality);

// The image as a file of limited size.
struct BoundedRepresentation {
  EncodingOutcome outcome = EncodingOutcome::failed;
  Data data;  // empty unless the outcome is `done`
};

// Like above, but encoding stops when the output exceeds maximumBytes. The outcome is the same as
// if the whole file had been encoded.
BoundedRepresentation UIImagePNGRepresentation(const std::shared_ptr<UIImage>& image,
                                               std::size_t maximumBytes);
BoundedRepresentation UIImageJPEGRepresentation(const std::shared_ptr<UIImage>& image,
                                                double quality, std::size_t maximumBytes);

}  // namespace platform
