#include "platform/uikit/images/UIImage.h"

#include "platform/foundation/files/FileSystem.h"
#include "platform/foundation/objects/NSLog.h"
#include "platform/foundation/objects/Process.h"
#include "platform/uikit/drawing/UIColor.h"
#include "platform/uikit/images/CGContext.h"
#include "platform/uikit/images/ImageCodecs.h"
#include "platform/uikit/images/ImageHeader.h"
#include "platform/uikit/images/ImageShapes.h"
#include "platform/uikit/images/Sha256.h"

namespace platform {
namespace {

double scaleOfFileName(std::string_view path) {
  const std::string_view name = path.substr(path.find_last_of('/') + 1);
  const std::string_view stem = name.substr(0, name.find_last_of('.'));
  if (stem.ends_with("@2x")) return 2;
  if (stem.ends_with("@3x")) return 3;
  return 1;
}

}  // namespace

std::shared_ptr<UIImage> UIImage::imageWithData(const Data& data, double scale) {
  const auto header = readImageHeader(data.bytes());
  if (!header) return nullptr;
  if (const auto refusal = refusalOfImageSize(header->width, header->height)) {
    NSLog("An image is refused: %@", {*refusal});
    return nullptr;
  }
  if (!isWholePicture(data.bytes())) return nullptr;
  auto image = std::make_shared<UIImage>();
  image->_pixelWidth = header->width;
  image->_pixelHeight = header->height;
  image->_scale = scale > 0 ? scale : 1;
  image->_encoded = data;
  return image;
}

std::shared_ptr<UIImage> UIImage::imageWithContentsOfFile(std::string_view path) {
  const FileContents contents = Process::current().service<FileSystem>().read(path);
  if (contents.error) return nullptr;
  return imageWithData(Data(contents.bytes), scaleOfFileName(path));
}

std::shared_ptr<UIImage> UIImage::systemImageNamed(std::string_view name) {
  if (name.empty()) return nullptr;
  constexpr std::uint32_t symbolSide = 20;
  auto image = std::make_shared<UIImage>();
  image->_pixelWidth = symbolSide;
  image->_pixelHeight = symbolSide;
  image->_symbolName = std::string(name);
  return image;
}

std::shared_ptr<UIImage> UIImage::imageWithPixels(ImagePixels pixels, double scale) {
  const std::uint64_t count = static_cast<std::uint64_t>(pixels.width) * pixels.height;
  if (count == 0 || count > pixels.rgba.size() / bytesPerPixel ||
      pixels.rgba.size() != count * bytesPerPixel) {
    return nullptr;
  }
  auto image = std::make_shared<UIImage>();
  image->_pixelWidth = pixels.width;
  image->_pixelHeight = pixels.height;
  image->_scale = scale > 0 ? scale : 1;
  image->_pixels = std::make_shared<const ImagePixels>(std::move(pixels));
  return image;
}

std::shared_ptr<const ImagePixels> UIImage::decodedPixels() const {
  if (_pixels || !_encoded) return _pixels;
  DecodedPicture picture = imageCodecs().decode(_encoded->bytes());
  if (!picture.pixels) NSLog("An image cannot be decoded: %@", {picture.problem});
  return std::move(picture.pixels);
}

std::shared_ptr<UIImage> UIImage::imageByPreparingForDisplay() const {
  auto pixels = decodedPixels();
  if (!pixels) return nullptr;
  auto image = std::make_shared<UIImage>();
  image->_pixelWidth = pixels->width;
  image->_pixelHeight = pixels->height;
  image->_scale = _scale;
  image->_pixels = std::move(pixels);
  return image;
}

std::shared_ptr<UIImage> UIImage::imageWithTintColor(const std::shared_ptr<UIColor>& color) const {
  const auto shape = color ? decodedPixels() : nullptr;
  if (!shape) return nullptr;
  ImagePixels pixels = *shape;
  tintPixels(pixels, color->components());
  return imageWithPixels(std::move(pixels), _scale);
}

std::shared_ptr<UIImage> UIImage::applicationIconImageForFormat(std::int64_t format,
                                                                bool /*precomposed*/,
                                                                double scale) const {
  constexpr double smallSide = 29;
  constexpr double largeSide = 40;
  const double side = format == 0 ? smallSide : largeSide;
  auto context = CGContext::create({side, side}, scale, false);
  if (!context || !context->drawImage(*this, {0, 0, side, side})) return nullptr;
  ImagePixels pixels = context->takePixels();
  cutOutIconShape(pixels);
  return imageWithPixels(std::move(pixels), scale);
}

Size UIImage::size() const noexcept {
  return {_pixelWidth / _scale, _pixelHeight / _scale};
}

const std::string& UIImage::contentHash() const {
  std::call_once(_hashOnce, [this] { _hash = computeHash(); });
  return _hash;
}

std::string UIImage::computeHash() const {
  Sha256 hash;
  if (_encoded) {
    hash.add(_encoded->bytes());
  } else if (_pixels) {
    hash.add("pixels " + std::to_string(_pixelWidth) + "x" + std::to_string(_pixelHeight) + "\n");
    hash.add(std::span<const std::uint8_t>(_pixels->rgba));
  } else {
    hash.add("symbol " + _symbolName.value_or(""));
  }
  return hash.finish();
}

}  // namespace platform
