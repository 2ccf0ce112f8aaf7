#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>

namespace platform {
class UIImage;
}

namespace settings {

// Images, keyed by the hash of their content.
using NamedImages = std::unordered_map<std::string, std::shared_ptr<platform::UIImage>>;

// Images that the tree contained a short while ago. A presenter fetches an image some time after it
// read its hash; during a scroll, the row that showed it may be out of sight by then. Threads: the
// application's.
class PastImages {
 public:
  // Keeps the images that are in `before` and not in `now`. Drops the oldest ones above the size
  // limit.
  void keep(const NamedImages& before, const NamedImages& now);
  // Returns null if the image is not kept.
  std::shared_ptr<platform::UIImage> find(const std::string& hash) const;
  void clear();

 private:
  void drop(const std::string& hash);

  std::deque<std::pair<std::string, std::shared_ptr<platform::UIImage>>> _images;
  std::size_t _pixels = 0;
};

}  // namespace settings
