#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

namespace platform {

// The bytes of a picture that is being encoded, up to a limit.
class PictureOutput {
 public:
  explicit PictureOutput(std::size_t limit) : _limit(limit) {}

  // False, and nothing added, where the limit would be passed or there is no memory. Never throws:
  // the callers are callbacks of C libraries.
  bool append(const std::uint8_t* bytes, std::size_t count) noexcept try {
    _aboveLimit = count > _limit - _bytes.size();
    if (_aboveLimit) return false;
    _bytes.insert(_bytes.end(), bytes, bytes + count);
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
  // Whether the limit was the reason.
  bool isAboveLimit() const noexcept { return _aboveLimit; }
  std::vector<std::uint8_t> take() noexcept { return std::move(_bytes); }

 private:
  std::size_t _limit;
  bool _aboveLimit = false;
  std::vector<std::uint8_t> _bytes;
};

}  // namespace platform
