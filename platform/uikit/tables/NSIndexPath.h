#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/foundation/objects/Object.h"

namespace platform {

// A row of a table, for C++ code.
struct IndexPath {
  std::int64_t section = 0;
  std::int64_t row = 0;
  // NOLINTNEXTLINE(modernize-use-nullptr): the comparison with 0 is the compiler's own.
  friend auto operator<=>(const IndexPath&, const IndexPath&) = default;
};

// An index path as an object, for operations that are sent by name.
class NSIndexPath : public Object {
  PLATFORM_CLASS(NSIndexPath)

 public:
  NSIndexPath() = default;
  explicit NSIndexPath(IndexPath path) : _path(path) {}
  static std::shared_ptr<NSIndexPath> indexPathForRow(std::int64_t row, std::int64_t section) {
    return std::make_shared<NSIndexPath>(IndexPath{section, row});
  }

  std::int64_t section() const noexcept { return _path.section; }
  std::int64_t row() const noexcept { return _path.row; }
  IndexPath path() const noexcept { return _path; }

  bool isEqual(const Object& other) const override;
  std::string description() const override;

 private:
  IndexPath _path;
};

}  // namespace platform
