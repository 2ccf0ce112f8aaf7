#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/uikit/images/ImageOrientation.h"
#include "platform/uikit/images/ImagePixels.h"

namespace platform {

// Takes the rows of a stored picture, from the top, and puts them upright where they belong,
// without a second copy of the picture where the rows come one after another.
class OrientedRows {
 public:
  enum class Order : std::uint8_t {
    oneAfterAnother,  // a row is finished before the next is asked for
    all,              // all rows are asked for, perhaps several times, before the first is finished
  };
  OrientedRows(std::uint32_t storedWidth, std::uint32_t storedHeight, ImageOrientation orientation,
               Order order);

  // Four bytes a pixel, to be filled; keeps what was put there until the row is finished.
  // 0 <= y < stored height.
  std::uint8_t* row(std::uint32_t y) noexcept;
  // The rows must be finished in their order.
  void finishRow(std::uint32_t y) noexcept;
  // When all rows are finished.
  std::shared_ptr<const ImagePixels> take() noexcept { return std::move(_upright); }

 private:
  bool keepsRows() const noexcept { return _placement.acrossStep == 1; }
  void placeRows(std::uint32_t first, std::uint32_t count) noexcept;

  std::uint32_t _width;
  std::uint32_t _height;
  PixelPlacement _placement;
  std::shared_ptr<ImagePixels> _upright;
  std::uint32_t _heldRows = 0;         // how many rows wait to be placed together
  std::vector<std::uint8_t> _waiting;  // those rows, where they are not placed as they come
};

}  // namespace platform
