#pragma once

#include <cstdint>

namespace platform {

// All lengths are in points. y grows downwards.
struct Point {
  double x = 0;
  double y = 0;
  friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
  double width = 0;
  double height = 0;
  friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;

  Point origin() const noexcept { return {x, y}; }
  Size size() const noexcept { return {width, height}; }
  double maxX() const noexcept { return x + width; }
  double maxY() const noexcept { return y + height; }
  // The left and top edges are inside, the right and bottom edges are outside.
  bool contains(Point point) const noexcept {
    return point.x >= x && point.x < maxX() && point.y >= y && point.y < maxY();
  }
  friend bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace platform
