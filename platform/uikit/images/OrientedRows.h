#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/uikit/images/ImageOrientation.h"
#include "platform/uikit/images/ImagePixels.h"

namespace platform {

// Takes the rows of a stored picture from the top and places them upright. If the rows arrive one
// at a time, it needs no second copy of the picture.
class OrientedRows {
 public:
  enum class Order : std::uint8_t {
    oneAfterAnother,  // each row is finished before the next is requested
    all,              // all rows are requested, perhaps repeatedly, before the first is finished
  };
  OrientedRows(std::uint32_t storedWidth, std::uint32_t storedHeight, ImageOrientation orientation,
               Order order);

  // Returns a row to fill, four bytes per pixel. Its content is kept until the row is finished. 0
  // <= y < stored height.
  std::uint8_t* row(std::uint32_t y) noexcept;
  // Rows must be finished in order.
  void finishRow(std::uint32_t y) noexcept;
  // Call after all rows are finished.
  std::shared_ptr<const ImagePixels> take() noexcept { return std::move(_upright); }

 private:
  bool keepsRows() const noexcept { return _placement.acrossStep == 1; }
  void placeRows(std::uint32_t first, std::uint32_t count) noexcept;

  std::uint32_t _width;
  std::uint32_t _height;
  PixelPlacement _placement;
  std::shared_ptr<ImagePixels> _upright;
  std::uint32_t _heldRows = 0;         // number of rows that are placed together
  std::vector<std::uint8_t> _waiting;  // those rows, if they are not placed immediately
};

}  // namespace platform
