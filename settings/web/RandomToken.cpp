#include "settings/web/RandomToken.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <unistd.h>

namespace settings {
namespace {

constexpr std::size_t tokenBytes = 32;

}  // namespace

std::optional<std::string> randomToken() {
  std::array<std::uint8_t, tokenBytes> bytes{};
  if (::getentropy(bytes.data(), bytes.size()) != 0) return std::nullopt;
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
