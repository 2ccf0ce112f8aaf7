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

// The size limit of a photo's file, in bytes.
inline constexpr std::uint64_t largestPhotoBytes = 64ULL * 1024 * 1024;

// A decoded picture, or the reason why the bytes are not one.
struct PhotoResult {
  std::shared_ptr<platform::UIImage> image;
  std::string problem;  // for the user; empty if there is an image
};

// Decodes a complete PNG or JPEG of at most largestPhotoBytes. A picture with too many pixels is
// rejected by its header, before any of it is decompressed. Takes as long as the decompression.
// Threads: any, also without a process.
PhotoResult readPhoto(const platform::Data& bytes);

// A photo of the library, or a file there that is not a photo.
struct LibraryPhoto {
  std::string name;
  Thumbnail thumbnail;  // set if the file looks like a photo
  std::string problem;  // why it is not a photo, for the user; empty for a photo
};

// The photo library of a device: the files of one folder. No function here decompresses a photo, so
// neither listing the library nor choosing a photo blocks the main thread. Threads: main.
class PhotoLibrary {
 public:
  explicit PhotoLibrary(std::shared_ptr<platform::FileSystem> files) : _files(std::move(files)) {}

  // The photos, sorted by name, as they were when the picker with this identity first asked. The
  // content of a picker does not change while it is open.
  const std::vector<LibraryPhoto>& photosFor(std::uint64_t picker);
  // The photo with this name as it is now. Fails for a file that is already known to be damaged.
  // Other damage shows only when the pixels are read.
  PhotoResult photo(std::string_view name) const;

  // The work that makes the thumbnail with this key, which must belong to the photos that were
  // returned last; otherwise empty. The work may run on any thread and takes as long as
  // decompressing the photo.
  std::function<ThumbnailFile()> thumbnailWork(std::string_view key) const;
  // Records that the work found that the file is not a photo.
  void noteProblem(std::string_view key, const std::string& problem);

 private:
  std::shared_ptr<platform::FileSystem> _files;
  std::uint64_t _picker = 0;
  std::vector<LibraryPhoto> _photos;
};

}  // namespace settings
