#pragma once

#include <memory>

#include "platform/uikit/images/UIImage.h"

namespace zentrova {

enum class IconSize { normal, big };

// The side of an icon, in points: 29, or 40 where it is big.
double sideOfIcon(IconSize size) noexcept;

// A white square of that side in the shape of an application icon. Made once per size for the whole
// process and shared. Threads: main.
std::shared_ptr<platform::UIImage> iconMaskOfSize(IconSize size);

}  // namespace zentrova
