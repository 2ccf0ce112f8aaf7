#include "settings/web/RandomToken.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <sys/random.h>

namespace settings {
namespace {

constexpr std::size_t tokenBytes = 32;

bool fillRandom(std::array<std::uint8_t, tokenBytes>& bytes) {
  std::size_t filled = 0;
  while (filled < bytes.size()) {
    const ssize_t got = ::getrandom(bytes.data() + filled, bytes.size() - filled, 0);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return false;
    filled += static_cast<std::size_t>(got);
  }
  return true;
}

}  // namespace

std::optional<std::string> randomToken() {
  std::array<std::uint8_t, tokenBytes> bytes{};
  if (!fillRandom(bytes)) return std::nullopt;
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text;
  text.reserve(bytes.size() * 2);
  for (const std::uint8_t byte : bytes) {
    text += digits[byte >> 4];
    text += digits[byte & 15];
  }
  return text;
}

bool sameSecret(std::string_view given, std::string_view secret) noexcept {
  if (given.size() != secret.size()) return false;
  unsigned difference = 0;
  for (std::size_t index = 0; index < secret.size(); ++index) {
    difference |= static_cast<unsigned char>(given[index]) ^
                  static_cast<unsigned>(static_cast<unsigned char>(secret[index]));
  }
  return difference == 0;
}

}  // namespace settings
