#include "settings/panes/PastImages.h"

#include <algorithm>

#include "platform/uikit/images/UIImage.h"

namespace settings {

namespace {

// Enough for some hundred icons; a full photograph is not kept.
constexpr std::size_t mostPixels = std::size_t{4} * 1024 * 1024;

using Kept = std::pair<std::string, std::shared_ptr<platform::UIImage>>;

std::size_t pixelsOf(const platform::UIImage& image) {
  return std::size_t{image.pixelWidth()} * image.pixelHeight();
}

}  // namespace

void PastImages::keep(const NamedImages& before, const NamedImages& now) {
  for (const auto& [hash, image] : before) {
    if (now.contains(hash)) continue;
    drop(hash);
    _images.emplace_back(hash, image);
    _pixels += pixelsOf(*image);
  }
  while (_pixels > mostPixels) {
    _pixels -= pixelsOf(*_images.front().second);
    _images.pop_front();
  }
}

std::shared_ptr<platform::UIImage> PastImages::find(const std::string& hash) const {
  const auto found = std::ranges::find(_images, hash, &Kept::first);
  return found == _images.end() ? nullptr : found->second;
}

void PastImages::clear() {
  _images.clear();
  _pixels = 0;
}

void PastImages::drop(const std::string& hash) {
  const auto found = std::ranges::find(_images, hash, &Kept::first);
  if (found == _images.end()) return;
  _pixels -= pixelsOf(*found->second);
  _images.erase(found);
}

}  // namespace settings
