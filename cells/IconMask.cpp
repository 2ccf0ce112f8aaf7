#include "cells/IconMask.h"

#include <map>

#include "appearance/IconImage.h"
#include "platform/foundation/objects/Process.h"
#include "platform/uikit/drawing/UIColor.h"

namespace zentrova {
namespace {

// Used on the main thread only, so it needs no lock.
struct IconMaskCache {
  std::map<double, std::shared_ptr<platform::UIImage>> masks;  // by side
};

}  // namespace

double sideOfIcon(IconSize size) noexcept {
  return size == IconSize::big ? 40.0 : 29.0;
}

std::shared_ptr<platform::UIImage> iconMaskOfSize(IconSize size) {
  auto& masks = platform::Process::current().once<IconMaskCache>().masks;
  auto& mask = masks[sideOfIcon(size)];
  if (!mask) {
    mask = iconFromColorAndGlyph(platform::UIColor::whiteColor(), size == IconSize::big ? 1 : 0,
                                 nullptr);
  }
  return mask;
}

}  // namespace zentrova
