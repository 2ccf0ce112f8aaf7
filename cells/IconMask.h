#pragma once

#include <memory>

#include "platform/uikit/images/UIImage.h"

namespace zentrova {

enum class IconSize { normal, big };

// The side of an icon in points: 29, or 40 for a big one.
double sideOfIcon(IconSize size) noexcept;

// A white square of that side in the shape of an application icon. The process makes one per size
// and shares it. Threads: main.
std::shared_ptr<platform::UIImage> iconMaskOfSize(IconSize size);

}  // namespace zentrova
