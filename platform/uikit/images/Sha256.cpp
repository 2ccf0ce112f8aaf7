#include "platform/uikit/images/Sha256.h"

#include <algorithm>
#include <bit>

namespace platform {
namespace {

// The first 32 bits of the fractional parts of the cube roots of the first 64 primes.
constexpr std::array<std::uint32_t, 64> roundConstants = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

std::uint32_t bigEndianWord(const std::uint8_t* bytes) {
  return static_cast<std::uint32_t>(bytes[0]) << 24U | static_cast<std::uint32_t>(bytes[1]) << 16U |
         static_cast<std::uint32_t>(bytes[2]) << 8U | bytes[3];
}

std::array<std::uint32_t, 64> messageSchedule(const std::uint8_t* block) {
  std::array<std::uint32_t, 64> words{};
  for (std::size_t i = 0; i < 16; ++i) words[i] = bigEndianWord(block + 4 * i);
  for (std::size_t i = 16; i < words.size(); ++i) {
    const std::uint32_t a = words[i - 15];
    const std::uint32_t b = words[i - 2];
    const std::uint32_t low = std::rotr(a, 7) ^ std::rotr(a, 18) ^ (a >> 3U);
    const std::uint32_t high = std::rotr(b, 17) ^ std::rotr(b, 19) ^ (b >> 10U);
    words[i] = words[i - 16] + low + words[i - 7] + high;
  }
  return words;
}

}  // namespace

void Sha256::addBlock(const std::uint8_t* block) {
  const auto words = messageSchedule(block);
  auto s = _state;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::uint32_t high = std::rotr(s[4], 6) ^ std::rotr(s[4], 11) ^ std::rotr(s[4], 25);
    const std::uint32_t choice = (s[4] & s[5]) ^ (~s[4] & s[6]);
    const std::uint32_t first = s[7] + high + choice + roundConstants[i] + words[i];
    const std::uint32_t low = std::rotr(s[0], 2) ^ std::rotr(s[0], 13) ^ std::rotr(s[0], 22);
    const std::uint32_t majority = (s[0] & s[1]) ^ (s[0] & s[2]) ^ (s[1] & s[2]);
    s = {first + low + majority, s[0], s[1], s[2], s[3] + first, s[4], s[5], s[6]};
  }
  for (std::size_t i = 0; i < s.size(); ++i) _state[i] += s[i];
}

void Sha256::add(std::span<const std::uint8_t> bytes) {
  _length += bytes.size();
  while (!bytes.empty()) {
    const std::size_t taken = std::min(blockSize - _buffered, bytes.size());
    std::copy_n(bytes.begin(), taken, _buffer.begin() + static_cast<std::ptrdiff_t>(_buffered));
    _buffered += taken;
    bytes = bytes.subspan(taken);
    if (_buffered < blockSize) return;
    addBlock(_buffer.data());
    _buffered = 0;
  }
}

void Sha256::add(std::string_view bytes) {
  add({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
}

std::string Sha256::finish() {
  const std::uint64_t bits = _length * 8;
  const std::uint8_t end = 0x80;
  const std::uint8_t zero = 0;
  add({&end, 1});
  while (_buffered != blockSize - sizeof(bits)) add({&zero, 1});
  for (std::size_t i = 0; i < sizeof(bits); ++i) {
    const auto byte = static_cast<std::uint8_t>(bits >> (8 * (sizeof(bits) - 1 - i)));
    add({&byte, 1});
  }
  std::string text;
  for (const std::uint32_t word : _state) {
    for (unsigned shift = 32; shift > 0; shift -= 4) {
      text += "0123456789abcdef"[(word >> (shift - 4)) & 0xFU];
    }
  }
  return text;
}

}  // namespace platform
