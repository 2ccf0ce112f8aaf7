// The JPEG decoder.

#include <string>

#include "platform/uikit/images/JpegErrors.h"
#include "platform/uikit/images/OrientedRows.h"
#include "platform/uikit/images/PictureFormats.h"

namespace platform {
namespace {

// A progressive file may contain any number of scans, but no encoder needs more.
constexpr int maximumScans = 64;

void stopAfterManyScans(j_common_ptr common) {
  if (reinterpret_cast<j_decompress_ptr>(common)->input_scan_number > maximumScans) {
    JpegErrors::leaveBecause(common, "it has too many scans");
  }
}

// Converts ink values to light. Values are stored as in print, but files with Adobe's marker store
// them inverted.
void lightenRow(std::uint8_t* pixel, std::uint32_t width, bool inverted) {
  for (std::uint32_t x = 0; x < width; ++x, pixel += bytesPerPixel) {
    const int flip = inverted ? 0 : 0xFF;
    const int black = pixel[3] ^ flip;
    for (int i = 0; i < 3; ++i) {
      pixel[i] = static_cast<std::uint8_t>(((pixel[i] ^ flip) * black + 127) / 255);
    }
    pixel[3] = 0xFF;
  }
}

class JpegReading {
 public:
  JpegReading() { _errors.install(reinterpret_cast<jpeg_common_struct&>(_info), work); }
  ~JpegReading() { jpeg_destroy_decompress(&_info); }
  JpegReading(const JpegReading&) = delete;
  JpegReading& operator=(const JpegReading&) = delete;

  // Each function returns false if the file is refused; problem() has the reason.
  bool readHeader(std::span<const std::uint8_t> file);
  bool readRows(OrientedRows& rows);

  std::uint32_t width() const noexcept { return _info.image_width; }
  std::uint32_t height() const noexcept { return _info.image_height; }
  std::string problem() const { return _errors.problem(); }

 private:
  static constexpr const char* work = "The JPEG cannot be read";
  bool isInk() const noexcept { return _info.out_color_space == JCS_CMYK; }

  jpeg_decompress_struct _info{};
  JpegErrors _errors;
  jpeg_progress_mgr _progress{};
};

bool JpegReading::readHeader(std::span<const std::uint8_t> file) {
  if (setjmp(_errors.back()) != 0) return false;
  jpeg_create_decompress(&_info);
  _progress.progress_monitor = stopAfterManyScans;
  _info.progress = &_progress;
  jpeg_mem_src(&_info, file.data(), file.size());
  jpeg_read_header(&_info, TRUE);
  const bool ink = _info.jpeg_color_space == JCS_CMYK || _info.jpeg_color_space == JCS_YCCK;
  _info.out_color_space = ink ? JCS_CMYK : JCS_EXT_RGBA;
  return true;
}

bool JpegReading::readRows(OrientedRows& rows) {
  if (setjmp(_errors.back()) != 0) return false;
  jpeg_start_decompress(&_info);
  while (_info.output_scanline < _info.output_height) {
    const std::uint32_t y = _info.output_scanline;
    JSAMPROW row = rows.row(y);
    jpeg_read_scanlines(&_info, &row, 1);
    if (isInk()) lightenRow(row, _info.output_width, _info.saw_Adobe_marker == TRUE);
    rows.finishRow(y);
  }
  jpeg_finish_decompress(&_info);
  return true;
}

}  // namespace

DecodedPicture decodeJpegFile(std::span<const std::uint8_t> file, const ImageHeader& header) {
  JpegReading reading;
  if (!reading.readHeader(file)) return {nullptr, reading.problem()};
  const bool swaps = header.orientation.swapsSides();
  if (reading.width() != (swaps ? header.height : header.width) ||
      reading.height() != (swaps ? header.width : header.height)) {
    return {nullptr, "The JPEG cannot be read: it declares its size twice."};
  }
  OrientedRows rows(reading.width(), reading.height(), header.orientation,
                    OrientedRows::Order::oneAfterAnother);
  if (!reading.readRows(rows)) return {nullptr, reading.problem()};
  return {rows.take(), {}};
}

}  // namespace platform
