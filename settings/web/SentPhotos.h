#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "settings/device/PhotoLibrary.h"

namespace settings {

// The photos that pages have uploaded and that can be chosen, by name. A name contains a slash, so
// it cannot match a photo of the device's library. Only the most recent ones are kept, since each
// may be large. Threads: one.
class SentPhotos {
 public:
  // Stores the photo and returns its name.
  std::string keep(PhotoResult photo);
  // Empty if there is no such photo (any more).
  std::optional<PhotoResult> find(std::string_view name) const;
  void drop(std::string_view name);
  // Returns whether the name has the form of a name from this class.
  static bool isName(std::string_view name);

 private:
  struct Sent {
    std::string name;
    PhotoResult photo;
  };
  std::deque<Sent> _sent;
  std::uint64_t _count = 0;
};

}  // namespace settings
