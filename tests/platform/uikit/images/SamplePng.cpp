#include <png.h>
#include <stdexcept>

#include "tests/platform/uikit/images/SamplePictures.h"

namespace uikit_test {
namespace {

constexpr std::size_t signatureSize = 8;
constexpr std::size_t headerChunkSize = 25;

[[noreturn]] void refuse(png_structp, png_const_charp reason) {
  throw std::runtime_error(reason);
}

void append(png_structp png, png_bytep bytes, std::size_t count) {
  auto& file = *static_cast<Bytes*>(png_get_io_ptr(png));
  file.insert(file.end(), bytes, bytes + count);
}

int typeOf(PngColors colors) {
  switch (colors) {
    case PngColors::grey:
      return PNG_COLOR_TYPE_GRAY;
    case PngColors::greyAlpha:
      return PNG_COLOR_TYPE_GRAY_ALPHA;
    case PngColors::rgb:
      return PNG_COLOR_TYPE_RGB;
    case PngColors::rgba:
      return PNG_COLOR_TYPE_RGBA;
    case PngColors::palette:
      return PNG_COLOR_TYPE_PALETTE;
  }
  return 0;
}

void describePalette(png_structp png, png_infop info) {
  const png_color colors[] = {{255, 0, 0}, {0, 255, 0}, {0, 0, 255}};
  const png_byte alphas[] = {255, 128};
  png_set_PLTE(png, info, colors, 3);
  png_set_tRNS(png, info, alphas, 2, nullptr);
}

void appendNumber(Bytes& bytes, std::uint32_t number) {
  for (int shift = 24; shift >= 0; shift -= 8) {
    bytes.push_back(static_cast<std::uint8_t>(number >> static_cast<unsigned>(shift)));
  }
}

std::uint32_t checkSum(std::span<const std::uint8_t> bytes) {
  std::uint32_t sum = 0xFFFFFFFF;
  for (const std::uint8_t byte : bytes) {
    sum ^= byte;
    for (int bit = 0; bit < 8; ++bit) sum = sum >> 1U ^ ((sum & 1U) != 0 ? 0xEDB88320U : 0U);
  }
  return ~sum;
}

Bytes chunk(std::string_view name, const Bytes& content) {
  Bytes bytes;
  appendNumber(bytes, static_cast<std::uint32_t>(content.size()));
  bytes.insert(bytes.end(), name.begin(), name.end());
  bytes.insert(bytes.end(), content.begin(), content.end());
  appendNumber(bytes, checkSum(std::span(bytes).subspan(4)));
  return bytes;
}

void append(Bytes& bytes, const Bytes& more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}

}  // namespace

Bytes makePng(PngKind kind, std::uint32_t width, std::uint32_t height, const Bytes& rows) {
  Bytes file;
  Bytes copy = rows;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, refuse, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_write_fn(png, &file, append, [](png_structp) {});
  png_set_IHDR(png, info, width, height, kind.bitDepth, typeOf(kind.colors),
               kind.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  if (kind.colors == PngColors::palette) describePalette(png, info);
  png_write_info(png, info);
  const std::size_t rowSize = png_get_rowbytes(png, info);
  std::vector<png_bytep> pointers;
  for (std::uint32_t y = 0; y < height; ++y) pointers.push_back(&copy.at(rowSize * y));
  png_write_image(png, pointers.data());
  png_write_end(png, nullptr);
  png_destroy_write_struct(&png, &info);
  return file;
}

Bytes withChunk(const Bytes& png, std::string_view name, const Bytes& content) {
  Bytes file = png;
  const Bytes more = chunk(name, content);
  file.insert(file.begin() + signatureSize + headerChunkSize, more.begin(), more.end());
  return file;
}

Bytes pngThatPromises(std::uint32_t width, std::uint32_t height) {
  Bytes file = bytesOf("\x89PNG\r\n\x1A\n");
  Bytes header;
  appendNumber(header, width);
  appendNumber(header, height);
  append(header, {8, 6, 0, 0, 0});
  append(file, chunk("IHDR", header));
  append(file, chunk("IDAT", {}));
  append(file, chunk("IEND", {}));
  return file;
}

}  // namespace uikit_test
