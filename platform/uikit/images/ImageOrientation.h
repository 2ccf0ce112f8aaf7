#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace platform {

// How the stored rows of a picture have to be turned so that it is shown upright: the eight values
// of the Exif orientation. 1 is as stored; 2 is mirrored; 3 and 4 the same upside down; 5 to 8 have
// rows for columns.
class ImageOrientation {
 public:
  ImageOrientation() = default;
  // A value other than 1 to 8 counts as 1.
  static ImageOrientation fromExifValue(std::uint32_t value) noexcept;
  // Of the Exif data (the TIFF structure without what marks it in a file); as stored where there
  // is no orientation in it, or it is broken.
  static ImageOrientation fromExif(std::span<const std::uint8_t> tiff) noexcept;

  std::uint8_t exifValue() const noexcept { return _value; }
  bool swapsSides() const noexcept { return _value >= 5; }

 private:
  std::uint8_t _value = 1;
};

// Where the stored pixels belong in the upright picture, counted in pixels from its first one.
struct PixelPlacement {
  std::ptrdiff_t origin = 0;  // of the first stored pixel
  std::ptrdiff_t acrossStep = 1;
  std::ptrdiff_t downStep = 0;

  static PixelPlacement of(ImageOrientation orientation, std::uint32_t storedWidth,
                           std::uint32_t storedHeight) noexcept;
};

}  // namespace platform
