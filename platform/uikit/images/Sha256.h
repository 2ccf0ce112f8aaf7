#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace platform {

// The hash that identifies the content of an image. Not for security.
class Sha256 {
 public:
  void add(std::span<const std::uint8_t> bytes);
  void add(std::string_view bytes);
  // Returns 64 lower-case hexadecimal digits. Nothing may be added afterwards.
  std::string finish();

 private:
  static constexpr std::size_t blockSize = 64;
  void addBlock(const std::uint8_t* block);

  std::array<std::uint32_t, 8> _state = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                         0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
  std::array<std::uint8_t, blockSize> _buffer{};
  std::size_t _buffered = 0;
  std::uint64_t _length = 0;  // in bytes
};

}  // namespace platform
