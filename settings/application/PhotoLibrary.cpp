#include "settings/application/PhotoLibrary.h"

#include <cerrno>
#include <utility>

#include "platform/uikit/ImageCodecs.h"
#include "platform/uikit/ImageHeader.h"
#include "settings/device/DeviceTree.h"

namespace settings {
namespace {

constexpr std::uint64_t bytesPerMebibyte = 1024ULL * 1024;

PhotoResult noPhoto(std::string problem) {
  return {nullptr, std::move(problem)};
}

PhotoResult tooManyBytes() {
  return noPhoto("The file is larger than " + std::to_string(largestPhotoBytes / bytesPerMebibyte) +
                 " MiB, the most that is taken as a photo.");
}

// What can be said of a picture without unpacking it.
PhotoResult glanceAtPhoto(const platform::Data& bytes) {
  if (bytes.size() > largestPhotoBytes) return tooManyBytes();
  const auto header = platform::readImageHeader(bytes.bytes());
  if (!header) return noPhoto("The file is no PNG or JPEG picture.");
  if (auto refusal = platform::refusalOfImageSize(header->width, header->height)) {
    return noPhoto(std::move(*refusal));
  }
  auto image = platform::UIImage::imageWithData(bytes);
  return image ? PhotoResult{std::move(image), {}} : noPhoto("The picture is cut off.");
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
       _files.contentsOfDirectory(photosPath).value_or(std::vector<std::string>())) {
    if (!isVisibleName(name)) continue;
    LibraryPhoto photo{name, {}};
    if (const auto bytes = read(name, photo.picture)) photo.picture = glanceAtPhoto(*bytes);
    _photos.push_back(std::move(photo));
  }
  return _photos;
}

PhotoResult PhotoLibrary::photo(std::string_view name) {
  PhotoResult problem;
  const auto bytes = read(name, problem);
  return bytes ? readPhoto(*bytes) : problem;
}

std::optional<platform::Data> PhotoLibrary::read(std::string_view name, PhotoResult& problem) {
  if (name.empty() || name.find('/') != std::string_view::npos) {
    problem = noPhoto("\"" + std::string(name) + "\" is no name of a photo.");
    return std::nullopt;
  }
  const std::string path = std::string(photosPath) + "/" + std::string(name);
  const platform::FileContents contents = _files.read(path, largestPhotoBytes);
  if (!contents.error) {
    return platform::Data::sharing(contents.bytes.buffer(), contents.bytes.view());
  }
  problem = contents.error.code == EFBIG ? tooManyBytes() : noPhoto(contents.error.message);
  return std::nullopt;
}

}  // namespace settings
