#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/Collections.h"
#include "platform/foundation/FileSystem.h"
#include "platform/uikit/UIImage.h"

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
  PhotoResult picture;
};

// The photo library of a device: the files of one folder. Threads: one.
class PhotoLibrary {
 public:
  // The file system must outlive the library.
  explicit PhotoLibrary(platform::FileSystem& files) : _files(files) {}

  // The photos, by name, as they were when the picker of that identity asked first: what is shown
  // in a picker stays while it is open. They are not unpacked, so that a library of large photos
  // opens at once; one that turns out to be damaged is refused when it is chosen.
  const std::vector<LibraryPhoto>& photosFor(std::uint64_t picker);
  // The photo of that name as it is now, read to its end.
  PhotoResult photo(std::string_view name);

 private:
  std::optional<platform::Data> read(std::string_view name, PhotoResult& problem);

  platform::FileSystem& _files;
  std::uint64_t _picker = 0;
  std::vector<LibraryPhoto> _photos;
};

}  // namespace settings
