#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace platform {

// The transformation that shows the stored rows of a picture upright: the eight values of the Exif
// orientation. 1 is unchanged, 2 is mirrored, 3 and 4 are the same upside down, and 5 to 8 swap
// rows and columns.
class ImageOrientation {
 public:
  ImageOrientation() = default;
  // Values other than 1 to 8 become 1.
  static ImageOrientation fromExifValue(std::uint32_t value) noexcept;
  // Reads the orientation from Exif data (the TIFF structure without the file's marker). Unchanged
  // if the data has no orientation or is invalid.
  static ImageOrientation fromExif(std::span<const std::uint8_t> tiff) noexcept;

  std::uint8_t exifValue() const noexcept { return _value; }
  bool swapsSides() const noexcept { return _value >= 5; }

 private:
  std::uint8_t _value = 1;
};

// The position of stored pixels in the upright picture, as pixel offsets from its first pixel.
struct PixelPlacement {
  std::ptrdiff_t origin = 0;  // of the first stored pixel
  std::ptrdiff_t acrossStep = 1;
  std::ptrdiff_t downStep = 0;

  static PixelPlacement of(ImageOrientation orientation, std::uint32_t storedWidth,
                           std::uint32_t storedHeight) noexcept;
};

}  // namespace platform
