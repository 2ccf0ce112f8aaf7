#pragma once

#include <cstddef>
#include <memory>
#include <optional>

#include "platform/foundation/values/Collections.h"
#include "platform/uikit/images/UIImage.h"

namespace zentrova {

// In bytes. A larger background image is made smaller if possible.
inline constexpr std::size_t largestBackgroundImage = 4UL * 1024 * 1024;

// Encodes a background image for the store: as PNG if that fits, otherwise as JPEG of a quality of
// about 0.8, 0.7, ... 0.1 until it fits. If none fits, the result is the last one. Nothing if the
// picture cannot be decoded or encoded. An encoding that grows too large is stopped early.
// Threads: any. Takes seconds for a large picture.
std::optional<platform::Data> encodeBackgroundImage(
    const std::shared_ptr<platform::UIImage>& picture);

}  // namespace zentrova
