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

// Images by the hash of their content.
using NamedImages = std::unordered_map<std::string, std::shared_ptr<platform::UIImage>>;

// Images that the tree has named a short while ago. A presenter asks for an image some time after
// it has read its name; while one scrolls, the row that showed it may be out of sight by then.
// Threads: the application's.
class PastImages {
 public:
  // Keeps what was named before and is not named now; the oldest go where they become too many.
  void keep(const NamedImages& before, const NamedImages& now);
  // Null where it is not kept.
  std::shared_ptr<platform::UIImage> find(const std::string& hash) const;
  void clear();

 private:
  void drop(const std::string& hash);

  std::deque<std::pair<std::string, std::shared_ptr<platform::UIImage>>> _images;
  std::size_t _pixels = 0;
};

}  // namespace settings
