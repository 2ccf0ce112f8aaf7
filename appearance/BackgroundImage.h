#pragma once

#include <cstddef>
#include <memory>
#include <optional>

#include "platform/foundation/values/Collections.h"
#include "platform/uikit/images/UIImage.h"

namespace zentrova {

// Bytes. A background image that is larger is made smaller where that is possible.
inline constexpr std::size_t largestBackgroundImage = 4UL * 1024 * 1024;

// The form in which a background image is stored: PNG where that fits, else JPEG of about 0.8, 0.7
// and so on to 0.1 until it fits; the last one where none does. Nothing where the picture cannot be
// decoded or encoded. A file that gets too large is not written to its end, as nobody keeps it.
// Threads: any; takes seconds for a large picture.
std::optional<platform::Data> encodeBackgroundImage(
    const std::shared_ptr<platform::UIImage>& picture);

}  // namespace zentrova
