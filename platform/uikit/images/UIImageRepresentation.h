#pragma once

#include <cstddef>
#include <memory>
#include <optional>

#include "platform/foundation/values/Collections.h"
#include "platform/uikit/images/ImageCodecs.h"

namespace platform {

class UIImage;

// The image as a file. None for an empty pointer, for a symbol, and for what cannot be decoded or
// encoded, which also goes to the log. An image that is written several times is best prepared
// once, by UIImage::imageByPreparingForDisplay. Equal pixels give equal bytes.
// Threads: any.
std::optional<Data> UIImagePNGRepresentation(const std::shared_ptr<UIImage>& image);
// quality is from 0 (smallest) to 1 (best); what lies outside counts as the nearer of the two.
// What is transparent becomes white.
std::optional<Data> UIImageJPEGRepresentation(const std::shared_ptr<UIImage>& image,
                                              double quality);

// The image as a file of at most so many bytes.
struct BoundedRepresentation {
  EncodingOutcome outcome = EncodingOutcome::failed;
  Data data;  // empty unless the outcome is `done`
};

// As above, but the encoding ends as soon as the limit is passed: whether a file of at most
// maximumBytes comes out is decided as if it had been written to its end.
BoundedRepresentation UIImagePNGRepresentation(const std::shared_ptr<UIImage>& image,
                                               std::size_t maximumBytes);
BoundedRepresentation UIImageJPEGRepresentation(const std::shared_ptr<UIImage>& image,
                                                double quality, std::size_t maximumBytes);

}  // namespace platform
