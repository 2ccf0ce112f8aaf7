#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/objects/Object.h"
#include "platform/foundation/values/Collections.h"
#include "platform/uikit/drawing/Geometry.h"
#include "platform/uikit/images/ImagePixels.h"

namespace platform {

class UIColor;

// An image: encoded bytes as they came, or pixels, or a symbol of the system by its name.
// Immutable. Threads: any.
class UIImage : public Object {
  PLATFORM_CLASS(UIImage)

 public:
  UIImage() = default;

  // A PNG or JPEG, recognised by its header; the bytes are kept as they are and decoded when the
  // pixels are asked for. Empty for anything else, for a file that ends too early, and, with a line
  // in the log, for a picture above the limits of ImagePixels.h.
  static std::shared_ptr<UIImage> imageWithData(const Data& data, double scale = 1);
  // A file of the device. A name that ends in "@2x" or "@3x" before its extension gives the scale.
  // Empty where the file cannot be read or holds no image.
  static std::shared_ptr<UIImage> imageWithContentsOfFile(std::string_view path);
  // A symbol that the presenter draws. Empty for an empty name.
  static std::shared_ptr<UIImage> systemImageNamed(std::string_view name);
  // Empty where the pixels do not fill width x height, or there are none.
  static std::shared_ptr<UIImage> imageWithPixels(ImagePixels pixels, double scale);

  Size size() const noexcept;  // points
  // Pixels as shown: turned as the Exif orientation says.
  std::uint32_t pixelWidth() const noexcept { return _pixelWidth; }
  std::uint32_t pixelHeight() const noexcept { return _pixelHeight; }
  double scale() const noexcept { return _scale; }  // pixels per point

  const std::optional<std::string>& symbolName() const noexcept { return _symbolName; }
  // The bytes of an encoded image, else null. Owned by the image.
  const Data* encodedData() const noexcept { return _encoded ? &*_encoded : nullptr; }
  // The pixels of an image that was made of pixels, else null. Owned by the image.
  const ImagePixels* pixels() const noexcept { return _pixels.get(); }

  // The pixels, upright; an encoded image is decoded at every call. Empty for a symbol and, with a
  // line in the log, for what does not decode. Does not read the traits; threads: any.
  std::shared_ptr<const ImagePixels> decodedPixels() const;
  // An image of decodedPixels, for who draws or encodes more than once. Empty where those are.
  std::shared_ptr<UIImage> imageByPreparingForDisplay() const;

  // What is visible of the image in one colour: its alpha is the image's times the colour's. Empty
  // for no colour, and where decodedPixels are: a symbol takes the tint of the view that shows it.
  // A colour of the system is resolved by the traits of the moment (main thread).
  std::shared_ptr<UIImage> imageWithTintColor(const std::shared_ptr<UIColor>& color) const;
  // The image in the square of an application's icon, cut out in the icons' shape: 29 points for
  // format 0, 40 for every other. No gloss is laid over it, precomposed or not. Empty where the
  // pixels do not decode or the scale is not positive.
  std::shared_ptr<UIImage> applicationIconImageForFormat(std::int64_t format, bool precomposed,
                                                         double scale) const;

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
