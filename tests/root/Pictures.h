#pragma once

#include <cstdint>
#include <string>

// The beginnings of picture files: all that the platform reads of one.
namespace zentrova::tests {

inline std::string bigEndian(std::uint32_t number, int bytes) {
  std::string text;
  for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) {
    text += static_cast<char>((number >> static_cast<unsigned>(shift)) & 0xFFU);
  }
  return text;
}

inline std::string pngOf(std::uint32_t width, std::uint32_t height) {
  return std::string("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR", 16) + bigEndian(width, 4) +
         bigEndian(height, 4) + std::string("\x08\x06\0\0\0", 5);
}

inline std::string jpegOf(std::uint32_t width, std::uint32_t height) {
  return std::string("\xFF\xD8\xFF\xE0\0\x04JF\xFF\xC0\0\x11\x08", 13) + bigEndian(height, 2) +
         bigEndian(width, 2) + "\x03";
}

}  // namespace zentrova::tests
