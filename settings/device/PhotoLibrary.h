#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/foundation/files/FileSystem.h"
#include "platform/foundation/values/Collections.h"
#include "platform/uikit/images/UIImage.h"
#include "settings/device/Thumbnail.h"

namespace settings {

// The largest file that is taken as a photo, in bytes.
inline constexpr std::uint64_t largestPhotoBytes = 64ULL * 1024 * 1024;

// A picture, or why it is none.
struct PhotoResult {
  std::shared_ptr<platform::UIImage> image;
  std::string problem;  // for people; empty where there is an image
};

// The picture that these bytes are: a whole PNG or JPEG of no more than largestPhotoBytes. One that
// is too large in pixels is refused by its header, before anything of it is unpacked. Takes as long
// as unpacking does. Threads: any, one without a process too.
PhotoResult readPhoto(const platform::Data& bytes);

// A photo of the library, or a file there that is none.
struct LibraryPhoto {
  std::string name;
  Thumbnail thumbnail;  // of a file that looks like a photo
  std::string problem;  // why it is none, for people; empty for a photo
};

// The photo library of a device: the files of one folder. Nothing here unpacks a photo, so that
// neither a look at the library nor a choice keeps the main thread. Threads: main.
class PhotoLibrary {
 public:
  explicit PhotoLibrary(std::shared_ptr<platform::FileSystem> files) : _files(std::move(files)) {}

  // The photos, by name, as they were when the picker of that identity asked first: what is shown
  // in a picker stays while it is open.
  const std::vector<LibraryPhoto>& photosFor(std::uint64_t picker);
  // The photo of that name as it is now. Damage within it shows when its pixels are asked for; what
  // is known already is refused.
  PhotoResult photo(std::string_view name) const;

  // The work that makes the thumbnail of that key, one of those that were given last; empty where
  // there is none. It may run on any thread, and takes as long as unpacking the photo does.
  std::function<ThumbnailFile()> thumbnailWork(std::string_view key) const;
  // The work has shown that the photo is none.
  void noteProblem(std::string_view key, const std::string& problem);

 private:
  std::shared_ptr<platform::FileSystem> _files;
  std::uint64_t _picker = 0;
  std::vector<LibraryPhoto> _photos;
};

}  // namespace settings
