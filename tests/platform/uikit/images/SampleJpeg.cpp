#include <array>
#include <cstdio>
#include <cstdlib>
#include <jpeglib.h>
#include <stdexcept>

#include "tests/platform/uikit/images/SamplePictures.h"

namespace uikit_test {
namespace {

struct ColorSpaces {
  int components;
  J_COLOR_SPACE given;
  J_COLOR_SPACE stored;
};

ColorSpaces spacesOf(JpegColors colors) {
  switch (colors) {
    case JpegColors::grey:
      return {1, JCS_GRAYSCALE, JCS_GRAYSCALE};
    case JpegColors::cmyk:
      return {4, JCS_CMYK, JCS_CMYK};
    case JpegColors::ycck:
      return {4, JCS_CMYK, JCS_YCCK};
    case JpegColors::rgb:
      break;
  }
  return {3, JCS_RGB, JCS_YCbCr};
}

// With Adobe's marker, which the library writes for ink, no ink is stored as 255.
Bytes asStored(Bytes rows, const ColorSpaces& spaces) {
  if (spaces.given != JCS_CMYK) return rows;
  for (std::uint8_t& ink : rows) ink = static_cast<std::uint8_t>(0xFF - ink);
  return rows;
}

void describe(jpeg_compress_struct& info, JpegKind kind, const ColorSpaces& spaces) {
  constexpr int best = 100;
  info.input_components = spaces.components;
  info.in_color_space = spaces.given;
  jpeg_set_defaults(&info);
  jpeg_set_colorspace(&info, spaces.stored);
  jpeg_set_quality(&info, best, TRUE);
  for (int i = 0; i < info.num_components; ++i) {
    info.comp_info[i].h_samp_factor = 1;  // no chroma subsampling
    info.comp_info[i].v_samp_factor = 1;
  }
  if (kind.progressive) jpeg_simple_progression(&info);
}

}  // namespace

Bytes makeJpeg(JpegKind kind, std::uint32_t width, std::uint32_t height, const Bytes& rows) {
  const ColorSpaces spaces = spacesOf(kind.colors);
  Bytes stored = asStored(rows, spaces);
  jpeg_compress_struct info{};
  jpeg_error_mgr errors{};
  info.err = jpeg_std_error(&errors);
  jpeg_create_compress(&info);
  unsigned char* bytes = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&info, &bytes, &size);
  info.image_width = width;
  info.image_height = height;
  describe(info, kind, spaces);
  jpeg_start_compress(&info, TRUE);
  while (info.next_scanline < height) {
    JSAMPROW row = &stored.at(std::size_t{info.next_scanline} * width *
                              static_cast<std::size_t>(spaces.components));
    jpeg_write_scanlines(&info, &row, 1);
  }
  jpeg_finish_compress(&info);
  jpeg_destroy_compress(&info);
  Bytes file(bytes, bytes + size);
  std::free(bytes);
  return file;
}

Bytes withSegment(const Bytes& jpeg, std::uint8_t marker, const Bytes& content) {
  const std::size_t length = content.size() + 2;
  Bytes segment = {0xFF, marker, static_cast<std::uint8_t>(length >> 8U),
                   static_cast<std::uint8_t>(length)};
  segment.insert(segment.end(), content.begin(), content.end());
  Bytes file = jpeg;
  file.insert(file.begin() + 2, segment.begin(), segment.end());
  return file;
}

Bytes exifOf(std::uint8_t orientation, bool bigEndian) {
  if (bigEndian) {
    return {'M', 'M', 0, 42, 0, 0, 0, 8, 0, 1, 0x01, 0x12, 0, 3, 0, 0, 0, 1, 0, orientation, 0, 0};
  }
  return {'I', 'I', 42, 0, 8, 0, 0, 0, 1, 0, 0x12, 0x01, 3, 0, 1, 0, 0, 0, orientation, 0, 0, 0};
}

Bytes jpegExifOf(std::uint8_t orientation) {
  Bytes content = {'E', 'x', 'i', 'f', 0, 0};
  const Bytes exif = exifOf(orientation);
  content.insert(content.end(), exif.begin(), exif.end());
  return content;
}

platform::ImagePixels noise(std::uint32_t width, std::uint32_t height, std::uint32_t seed) {
  platform::ImagePixels pixels{width, height, Bytes(platform::bytesPerPixel * width * height)};
  std::uint32_t state = seed;
  for (std::size_t at = 0; at < pixels.rgba.size(); ++at) {
    state = state * 1664525 + 1013904223;
    pixels.rgba[at] = at % 4 == 3 ? 0xFF : static_cast<std::uint8_t>(state >> 24U);
  }
  return pixels;
}

std::string pixelAt(const platform::ImagePixels& pixels, std::uint32_t x, std::uint32_t y) {
  const std::uint8_t* pixel =
      &pixels.rgba.at(platform::bytesPerPixel * (std::size_t{pixels.width} * y + x));
  std::array<char, 9> text{};
  static_cast<void>(std::snprintf(text.data(), text.size(), "%02X%02X%02X%02X", pixel[0], pixel[1],
                                  pixel[2], pixel[3]));
  return text.data();
}

}  // namespace uikit_test
