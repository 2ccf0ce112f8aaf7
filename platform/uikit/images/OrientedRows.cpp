#include "platform/uikit/images/OrientedRows.h"

#include <algorithm>
#include <cstring>

namespace platform {
namespace {

// Stored rows become columns; this many together fill a cache line.
constexpr std::uint32_t rowsPlacedTogether = 16;

}  // namespace

OrientedRows::OrientedRows(std::uint32_t storedWidth, std::uint32_t storedHeight,
                           ImageOrientation orientation, Order order)
    : _width(storedWidth),
      _height(storedHeight),
      _placement(PixelPlacement::of(orientation, storedWidth, storedHeight)),
      _upright(std::make_shared<ImagePixels>()) {
  const bool swaps = orientation.swapsSides();
  _upright->width = swaps ? storedHeight : storedWidth;
  _upright->height = swaps ? storedWidth : storedHeight;
  _upright->rgba.resize(bytesPerPixel * storedWidth * storedHeight);
  if (keepsRows()) return;
  _heldRows = order == Order::all ? _height : std::min(_height, rowsPlacedTogether);
  _waiting.resize(bytesPerPixel * _width * _heldRows);
}

std::uint8_t* OrientedRows::row(std::uint32_t y) noexcept {
  if (!keepsRows()) return &_waiting[bytesPerPixel * _width * (y % _heldRows)];
  const std::ptrdiff_t pixel = _placement.origin + _placement.downStep * std::ptrdiff_t{y};
  return &_upright->rgba[bytesPerPixel * static_cast<std::size_t>(pixel)];
}

void OrientedRows::finishRow(std::uint32_t y) noexcept {
  if (keepsRows()) return;
  const std::uint32_t held = y % _heldRows + 1;
  if (held == _heldRows || y + 1 == _height) placeRows(y + 1 - held, held);
}

void OrientedRows::placeRows(std::uint32_t first, std::uint32_t count) noexcept {
  std::uint8_t* const upright = _upright->rgba.data();
  std::ptrdiff_t start = _placement.origin + _placement.downStep * std::ptrdiff_t{first};
  for (std::uint32_t x = 0; x < _width; ++x, start += _placement.acrossStep) {
    const std::uint8_t* from = &_waiting[bytesPerPixel * x];
    std::ptrdiff_t to = start;
    for (std::uint32_t i = 0; i < count; ++i, to += _placement.downStep) {
      std::memcpy(upright + static_cast<std::ptrdiff_t>(bytesPerPixel) * to, from, bytesPerPixel);
      from += bytesPerPixel * _width;
    }
  }
}

}  // namespace platform
