#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

namespace platform {

// Collects the bytes of an encoded picture, up to a limit.
class PictureOutput {
 public:
  explicit PictureOutput(std::size_t limit) : _limit(limit) {}

  // Appends nothing and returns false if the limit would be exceeded or memory runs out. Never
  // throws, because the callers are callbacks of C libraries.
  bool append(const std::uint8_t* bytes, std::size_t count) noexcept try {
    _aboveLimit = count > _limit - _bytes.size();
    if (_aboveLimit) return false;
    _bytes.insert(_bytes.end(), bytes, bytes + count);
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
  // Returns whether append failed because of the limit.
  bool isAboveLimit() const noexcept { return _aboveLimit; }
  std::vector<std::uint8_t> take() noexcept { return std::move(_bytes); }

 private:
  std::size_t _limit;
  bool _aboveLimit = false;
  std::vector<std::uint8_t> _bytes;
};

}  // namespace platform
