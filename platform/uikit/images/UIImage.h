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

// An image: encoded bytes, pixels, or the name of a system symbol. Immutable. Threads: any.
class UIImage : public Object {
  PLATFORM_CLASS(UIImage)

 public:
  UIImage() = default;

  // Makes an image from a PNG or JPEG, detected by its header. Keeps the bytes and decodes them on
  // demand. Empty for other formats, truncated files and pictures above the limits of
  // ImagePixels.h, which are also logged.
  static std::shared_ptr<UIImage> imageWithData(const Data& data, double scale = 1);
  // Reads a file of the device. A name that ends in "@2x" or "@3x" before its extension sets the
  // scale. Empty if the file cannot be read or is not an image.
  static std::shared_ptr<UIImage> imageWithContentsOfFile(std::string_view path);
  // Makes a symbol that the presenter draws. Empty for an empty name.
  static std::shared_ptr<UIImage> systemImageNamed(std::string_view name);
  // Empty if there are no pixels or they do not match width x height.
  static std::shared_ptr<UIImage> imageWithPixels(ImagePixels pixels, double scale);

  Size size() const noexcept;  // points
  // In pixels, after the Exif orientation is applied.
  std::uint32_t pixelWidth() const noexcept { return _pixelWidth; }
  std::uint32_t pixelHeight() const noexcept { return _pixelHeight; }
  double scale() const noexcept { return _scale; }  // pixels per point

  const std::optional<std::string>& symbolName() const noexcept { return _symbolName; }
  // The bytes of an encoded image, owned by the image; otherwise null.
  const Data* encodedData() const noexcept { return _encoded ? &*_encoded : nullptr; }
  // The pixels of an image made from pixels, owned by the image; otherwise null.
  const ImagePixels* pixels() const noexcept { return _pixels.get(); }

  // Returns upright pixels. Decodes an encoded image on every call. Empty for a symbol, and for an
  // image that cannot be decoded, which is also logged. Does not read the traits. Threads: any.
  std::shared_ptr<const ImagePixels> decodedPixels() const;
  // Returns an image of decodedPixels, for callers that draw or encode it repeatedly. Empty if
  // those are empty.
  std::shared_ptr<UIImage> imageByPreparingForDisplay() const;

  // Returns the image in a single colour: its alpha is multiplied by the colour's alpha. Empty if
  // the colour or decodedPixels are empty: a symbol has the tint of the view that shows it. A
  // system colour is resolved with the current traits (main thread).
  std::shared_ptr<UIImage> imageWithTintColor(const std::shared_ptr<UIColor>& color) const;
  // Returns the image in the size and shape of an application icon: 29 points for format 0, 40 for
  // all others. Never adds gloss, precomposed or not. Empty if the pixels cannot be decoded or the
  // scale is not positive.
  std::shared_ptr<UIImage> applicationIconImageForFormat(std::int64_t format, bool precomposed,
                                                         double scale) const;

  // Returns the SHA-256 of the content in lower-case hexadecimal, computed on the first call.
  // Images with equal content (bytes, or size and pixels, or symbol) have equal hashes.
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
