#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/Collections.h"
#include "platform/foundation/Object.h"
#include "platform/uikit/Geometry.h"

namespace platform {

// Pixels of an image: rows from the top, four bytes (red, green, blue, alpha, not premultiplied)
// a pixel.
struct ImagePixels {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::vector<std::uint8_t> rgba;
};

// An image: encoded bytes as they came, or pixels, or a symbol of the system by its name.
// Immutable. Threads: any.
class UIImage : public Object {
  PLATFORM_CLASS(UIImage)

 public:
  UIImage() = default;

  // PNG or JPEG, recognised by the header; the bytes are kept as they are. Empty for anything else.
  static std::shared_ptr<UIImage> imageWithData(const Data& data, double scale = 1);
  // A file of the device. A name that ends in "@2x" or "@3x" before its extension gives the scale.
  // Empty where the file cannot be read or holds no image.
  static std::shared_ptr<UIImage> imageWithContentsOfFile(std::string_view path);
  // A symbol that the presenter draws. Empty for an empty name.
  static std::shared_ptr<UIImage> systemImageNamed(std::string_view name);
  // Empty where the pixels do not fill width x height, or there are none.
  static std::shared_ptr<UIImage> imageWithPixels(ImagePixels pixels, double scale);

  Size size() const noexcept;  // points
  std::uint32_t pixelWidth() const noexcept { return _pixelWidth; }
  std::uint32_t pixelHeight() const noexcept { return _pixelHeight; }
  double scale() const noexcept { return _scale; }  // pixels per point

  const std::optional<std::string>& symbolName() const noexcept { return _symbolName; }
  // The bytes of an encoded image, else null. Owned by the image.
  const Data* encodedData() const noexcept { return _encoded ? &*_encoded : nullptr; }
  // The pixels of an image that was made of pixels, else null. Owned by the image.
  const ImagePixels* pixels() const noexcept { return _pixels.get(); }

  // SHA-256 of what the image shows, in lower-case hexadecimal; computed on the first call. Images
  // of equal content (bytes, or size and pixels, or symbol) have equal hashes.
  const std::string& contentHash() const;

 private:
  std::string computeHash() const;

  std::uint32_t _pixelWidth = 0;
  std::uint32_t _pixelHeight = 0;
  double _scale = 1;
  std::optional<Data> _encoded;
  std::shared_ptr<const ImagePixels> _pixels;
  std::optional<std::string> _symbolName;
  mutable std::once_flag _hashOnce;
  mutable std::string _hash;
};

}  // namespace platform
