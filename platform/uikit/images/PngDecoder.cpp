// The PNG decoder. A failing library call jumps back to the start of the work, so no objects with
// destructors may be created while the library runs.

#include <array>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <png.h>
#include <string>

#include "platform/uikit/images/OrientedRows.h"
#include "platform/uikit/images/PictureFormats.h"

namespace platform {
namespace {

class PngReading {
 public:
  explicit PngReading(std::span<const std::uint8_t> file) : _rest(file) {
    _png = png_create_read_struct(PNG_LIBPNG_VER_STRING, this, fail, passOver);
    if (_png == nullptr) return;
    _info = png_create_info_struct(_png);
  }
  ~PngReading() { png_destroy_read_struct(&_png, &_info, nullptr); }
  PngReading(const PngReading&) = delete;
  PngReading& operator=(const PngReading&) = delete;

  // Each function returns false if the file is refused; problem() has the reason.
  bool readHeader();
  bool readRows(OrientedRows& rows);

  std::uint32_t width() const { return png_get_image_width(_png, _info); }
  std::uint32_t height() const { return png_get_image_height(_png, _info); }
  bool isInterlaced() const { return png_get_interlace_type(_png, _info) != PNG_INTERLACE_NONE; }
  std::string problem() const { return _problem.data(); }

 private:
  static PngReading& of(png_structp png) {
    return *static_cast<PngReading*>(png_get_error_ptr(png));
  }
  [[noreturn]] static void fail(png_structp png, png_const_charp reason) {
    auto& problem = of(png)._problem;
    static_cast<void>(
        std::snprintf(problem.data(), problem.size(), "The PNG cannot be read: %s.", reason));
    png_longjmp(png, 1);
  }
  static void passOver(png_structp, png_const_charp) {}
  static void read(png_structp png, png_bytep to, std::size_t count) {
    auto& rest = static_cast<PngReading*>(png_get_io_ptr(png))->_rest;
    if (count > rest.size()) png_error(png, "it is cut off");
    std::memcpy(to, rest.data(), count);
    rest = rest.subspan(count);
  }
  void ignoreWhatIsNotNeeded();
  void askForFourBytesAPixel();

  std::span<const std::uint8_t> _rest;
  png_structp _png = nullptr;
  png_infop _info = nullptr;
  std::array<char, 160> _problem = {"There is not enough memory for the picture."};
};

// Skips texts, profiles and the like without parsing them, so that they cannot do harm.
void PngReading::ignoreWhatIsNotNeeded() {
  static constexpr char names[] =
      "bKGD\0cHRM\0eXIf\0gAMA\0hIST\0iCCP\0iTXt\0oFFs\0pCAL\0pHYs\0"
      "sBIT\0sCAL\0sPLT\0sRGB\0sTER\0tEXt\0tIME\0zTXt";
  constexpr int count = sizeof names / 5;
  png_set_keep_unknown_chunks(_png, PNG_HANDLE_CHUNK_NEVER, nullptr, 0);
  png_set_keep_unknown_chunks(_png, PNG_HANDLE_CHUNK_NEVER,
                              reinterpret_cast<png_const_bytep>(names), count);
}

bool PngReading::readHeader() {
  if (_info == nullptr) return false;
  if (setjmp(png_jmpbuf(_png)) != 0) return false;
  png_set_read_fn(_png, this, read);
  png_set_user_limits(_png, maximumImageSide, maximumImageSide);
  ignoreWhatIsNotNeeded();
  png_read_info(_png, _info);
  return true;
}

void PngReading::askForFourBytesAPixel() {
  constexpr png_uint_32 opaque = 0xFF;
  png_set_expand(_png);
  png_set_scale_16(_png);
  png_set_gray_to_rgb(_png);
  png_set_add_alpha(_png, opaque, PNG_FILLER_AFTER);
}

bool PngReading::readRows(OrientedRows& rows) {
  if (setjmp(png_jmpbuf(_png)) != 0) return false;
  askForFourBytesAPixel();
  const int passes = png_set_interlace_handling(_png);
  png_read_update_info(_png, _info);
  if (png_get_rowbytes(_png, _info) != bytesPerPixel * width()) png_error(_png, "odd rows");
  for (int pass = 0; pass < passes; ++pass) {
    for (std::uint32_t y = 0; y < height(); ++y) {
      png_read_row(_png, rows.row(y), nullptr);
      if (pass + 1 == passes) rows.finishRow(y);
    }
  }
  png_read_end(_png, nullptr);
  return true;
}

}  // namespace

DecodedPicture decodePngFile(std::span<const std::uint8_t> file, const ImageHeader& header) {
  PngReading reading(file);
  if (!reading.readHeader()) return {nullptr, reading.problem()};
  OrientedRows rows(
      reading.width(), reading.height(), header.orientation,
      reading.isInterlaced() ? OrientedRows::Order::all : OrientedRows::Order::oneAfterAnother);
  if (!reading.readRows(rows)) return {nullptr, reading.problem()};
  return {rows.take(), {}};
}

}  // namespace platform
