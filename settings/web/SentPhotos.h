#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "settings/device/PhotoLibrary.h"

namespace settings {

// The photos that pages have sent and that wait to be chosen, by the names that they were given. A
// name holds a slash, so that no photo of the device's library bears it. Only the last few are
// kept: each may be large. Threads: one.
class SentPhotos {
 public:
  // Gives the photo's name.
  std::string keep(PhotoResult photo);
  // Empty where no such photo is kept (any more).
  std::optional<PhotoResult> find(std::string_view name) const;
  void drop(std::string_view name);
  // Whether the name is one that a photo was, or could have been, given here.
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
