#include "settings/device/PhotoLibrary.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <utility>

#include "platform/uikit/images/ImageCodecs.h"
#include "platform/uikit/images/ImageHeader.h"
#include "settings/device/DevicePaths.h"

namespace settings {
namespace {

constexpr std::uint64_t bytesPerMebibyte = 1024ULL * 1024;

PhotoResult noPhoto(std::string problem) {
  return {nullptr, std::move(problem)};
}

PhotoResult tooManyBytes() {
  return noPhoto("The file is larger than " + std::to_string(largestPhotoBytes / bytesPerMebibyte) +
                 " MiB, the limit for a photo.");
}

// Checks a picture as far as possible without decompressing it.
PhotoResult glanceAtPhoto(const platform::Data& bytes) {
  if (bytes.size() > largestPhotoBytes) return tooManyBytes();
  const auto header = platform::readImageHeader(bytes.bytes());
  if (!header) return noPhoto("The file is not a PNG or JPEG picture.");
  if (auto refusal = platform::refusalOfImageSize(header->width, header->height)) {
    return noPhoto(std::move(*refusal));
  }
  auto image = platform::UIImage::imageWithData(bytes);
  return image ? PhotoResult{std::move(image), {}} : noPhoto("The picture is cut off.");
}

std::optional<platform::Data> readFile(platform::FileSystem& files, std::string_view name,
                                       PhotoResult& problem) {
  if (name.empty() || name.find('/') != std::string_view::npos) {
    problem = noPhoto("\"" + std::string(name) + "\" is not the name of a photo.");
    return std::nullopt;
  }
  const std::string path = std::string(photosPath) + "/" + std::string(name);
  const platform::FileContents contents = files.read(path, largestPhotoBytes);
  if (!contents.error) {
    return platform::Data::sharing(contents.bytes.buffer(), contents.bytes.view());
  }
  problem = contents.error.code == EFBIG ? tooManyBytes() : noPhoto(contents.error.message);
  return std::nullopt;
}

struct Glance {
  PhotoResult photo;
  Thumbnail thumbnail;  // set if there is an image
};

Glance glanceAtFile(platform::FileSystem& files, std::string_view name) {
  Glance glance;
  const auto bytes = readFile(files, name, glance.photo);
  if (bytes) glance.photo = glanceAtPhoto(*bytes);
  if (const auto& image = glance.photo.image) {
    glance.thumbnail =
        thumbnailOf(thumbnailKey(name, *bytes), image->pixelWidth(), image->pixelHeight());
  }
  return glance;
}

// Finds the photo whose thumbnail has this key; returns the end if there is none.
auto withKey(auto& photos, std::string_view key) {
  return std::ranges::find_if(photos, [key](const LibraryPhoto& photo) {
    return !key.empty() && photo.thumbnail.key == key;
  });
}

bool isVisibleName(const std::string& name) {
  return !name.empty() && name.front() != '.';
}

}  // namespace

PhotoResult readPhoto(const platform::Data& bytes) {
  PhotoResult photo = glanceAtPhoto(bytes);
  if (!photo.image) return photo;
  platform::DecodedPicture decoded = platform::LibraryImageCodecs().decode(bytes.bytes());
  return decoded.pixels ? photo : noPhoto(std::move(decoded.problem));
}

const std::vector<LibraryPhoto>& PhotoLibrary::photosFor(std::uint64_t picker) {
  if (_picker == picker) return _photos;
  _picker = picker;
  _photos.clear();
  for (const auto& name :
       _files->contentsOfDirectory(photosPath).value_or(std::vector<std::string>())) {
    if (!isVisibleName(name)) continue;
    auto [photo, thumbnail] = glanceAtFile(*_files, name);
    _photos.push_back({name, std::move(thumbnail), std::move(photo.problem)});
  }
  return _photos;
}

PhotoResult PhotoLibrary::photo(std::string_view name) const {
  auto [photo, thumbnail] = glanceAtFile(*_files, name);
  const auto known = withKey(_photos, thumbnail.key);
  return known == _photos.end() || known->problem.empty() ? photo : noPhoto(known->problem);
}

std::function<ThumbnailFile()> PhotoLibrary::thumbnailWork(std::string_view key) const {
  const auto found = withKey(_photos, key);
  if (found == _photos.end()) return {};
  return [files = _files, name = found->name, wanted = std::string(key)] {
    PhotoResult problem;
    const auto bytes = readFile(*files, name, problem);
    if (!bytes) return ThumbnailFile{{}, problem.problem};
    ThumbnailFile made = makeThumbnail(*bytes);
    // Another picture must not be cached under this key.
    if (thumbnailKey(name, *bytes) != wanted) made = {{}, "The file has changed in the meantime."};
    return made;
  };
}

void PhotoLibrary::noteProblem(std::string_view key, const std::string& problem) {
  const auto found = withKey(_photos, key);
  if (found != _photos.end()) found->problem = problem;
}

}  // namespace settings
