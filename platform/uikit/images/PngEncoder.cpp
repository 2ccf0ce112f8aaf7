// The PNG encoder. A failing library call jumps back to the start of the work, so no objects with
// destructors may be created while the library runs.

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstdio>
#include <png.h>
#include <string>
#include <vector>

#include "platform/uikit/images/PictureFormats.h"
#include "platform/uikit/images/PictureOutput.h"

namespace platform {
namespace {

// The features that the pixels need: colour, transparency.
struct PixelKind {
  bool colours = false;
  bool transparency = false;

  static PixelKind of(const ImagePixels& pixels) {
    PixelKind kind;
    const std::uint8_t* const end = pixels.rgba.data() + pixels.rgba.size();
    for (const std::uint8_t* pixel = pixels.rgba.data(); pixel != end; pixel += bytesPerPixel) {
      kind.colours = kind.colours || pixel[0] != pixel[1] || pixel[1] != pixel[2];
      kind.transparency = kind.transparency || pixel[3] != 0xFF;
      if (kind.colours && kind.transparency) break;
    }
    return kind;
  }
  std::size_t packedSize() const { return (colours ? 3U : 1U) + (transparency ? 1U : 0U); }
  int pngType() const {
    return (colours ? PNG_COLOR_MASK_COLOR : 0) | (transparency ? PNG_COLOR_MASK_ALPHA : 0);
  }
};

void packRow(const std::uint8_t* pixel, PixelKind kind, std::vector<std::uint8_t>& row) {
  const std::size_t colours = kind.colours ? 3 : 1;
  for (auto to = row.begin(); to != row.end(); pixel += bytesPerPixel) {
    to = std::copy_n(pixel, colours, to);
    if (kind.transparency) *to++ = pixel[3];
  }
}

class PngWriting {
 public:
  explicit PngWriting(std::size_t maximumBytes) : _output(maximumBytes) {
    _png = png_create_write_struct(PNG_LIBPNG_VER_STRING, this, fail, passOver);
    if (_png == nullptr) return;
    _info = png_create_info_struct(_png);
  }
  ~PngWriting() { png_destroy_write_struct(&_png, &_info); }
  PngWriting(const PngWriting&) = delete;
  PngWriting& operator=(const PngWriting&) = delete;

  EncodedPicture write(const ImagePixels& pixels) {
    const PixelKind kind = PixelKind::of(pixels);
    std::vector<std::uint8_t> row(kind.packedSize() * pixels.width);
    if (writeRows(pixels, kind, row)) return {EncodingOutcome::done, _output.take(), {}};
    if (_output.isAboveLimit()) return {EncodingOutcome::aboveLimit, {}, {}};
    return {EncodingOutcome::failed, {}, _problem.data()};
  }

 private:
  bool writeRows(const ImagePixels& pixels, PixelKind kind, std::vector<std::uint8_t>& row);

  [[noreturn]] static void fail(png_structp png, png_const_charp reason) {
    auto& problem = static_cast<PngWriting*>(png_get_error_ptr(png))->_problem;
    static_cast<void>(
        std::snprintf(problem.data(), problem.size(), "The PNG cannot be written: %s.", reason));
    png_longjmp(png, 1);
  }
  static void passOver(png_structp, png_const_charp) {}
  static void append(png_structp png, png_bytep bytes, std::size_t count) {
    auto& output = static_cast<PngWriting*>(png_get_io_ptr(png))->_output;
    if (!output.append(bytes, count)) png_error(png, "there is no room for it");
  }
  static void flush(png_structp) {}

  PictureOutput _output;
  png_structp _png = nullptr;
  png_infop _info = nullptr;
  std::array<char, 160> _problem = {"There is not enough memory for the picture."};
};

bool PngWriting::writeRows(const ImagePixels& pixels, PixelKind kind,
                           std::vector<std::uint8_t>& row) {
  constexpr int bitDepth = 8;
  if (_info == nullptr) return false;
  if (setjmp(png_jmpbuf(_png)) != 0) return false;
  png_set_write_fn(_png, this, append, flush);
  png_set_user_limits(_png, maximumImageSide, maximumImageSide);
  png_set_IHDR(_png, _info, pixels.width, pixels.height, bitDepth, kind.pngType(),
               PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_write_info(_png, _info);
  for (std::uint32_t y = 0; y < pixels.height; ++y) {
    packRow(&pixels.rgba[bytesPerPixel * pixels.width * y], kind, row);
    png_write_row(_png, row.data());
  }
  png_write_end(_png, nullptr);
  return true;
}

}  // namespace

EncodedPicture encodePngFile(const ImagePixels& pixels, std::size_t maximumBytes) {
  return PngWriting(maximumBytes).write(pixels);
}

}  // namespace platform
