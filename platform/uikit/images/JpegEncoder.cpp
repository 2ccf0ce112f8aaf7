// The JPEG encoder.

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "platform/uikit/images/JpegErrors.h"
#include "platform/uikit/images/PictureFormats.h"
#include "platform/uikit/images/PictureOutput.h"

namespace platform {
namespace {

// Converts 0..1 to the library's scale of 1 to 100.
int libraryQuality(double quality) {
  const double kept = quality > 0 ? std::min(quality, 1.0) : 0.0;
  return std::max(1, static_cast<int>(std::lround(kept * 100)));
}

void layOverWhite(const std::uint8_t* pixel, std::vector<std::uint8_t>& row) {
  for (auto to = row.begin(); to != row.end(); pixel += bytesPerPixel, to += bytesPerPixel) {
    const int alpha = pixel[3];
    for (int i = 0; i < 3; ++i) {
      to[i] = static_cast<std::uint8_t>((pixel[i] * alpha + 0xFF * (0xFF - alpha) + 127) / 0xFF);
    }
  }
}

class JpegWriting {
 public:
  explicit JpegWriting(std::size_t maximumBytes) : _output(maximumBytes) {
    _errors.install(reinterpret_cast<jpeg_common_struct&>(_info), work);
    _destination.writing = this;
  }
  ~JpegWriting() { jpeg_destroy_compress(&_info); }
  JpegWriting(const JpegWriting&) = delete;
  JpegWriting& operator=(const JpegWriting&) = delete;

  EncodedPicture write(const ImagePixels& pixels, double quality) {
    std::vector<std::uint8_t> row(bytesPerPixel * pixels.width);
    if (writeRows(pixels, libraryQuality(quality), row)) {
      return {EncodingOutcome::done, _output.take(), {}};
    }
    if (_output.isAboveLimit()) return {EncodingOutcome::aboveLimit, {}, {}};
    return {EncodingOutcome::failed, {}, _errors.problem()};
  }

 private:
  static constexpr const char* work = "The JPEG cannot be written";

  // The library's output.
  struct Destination {
    jpeg_destination_mgr manager{};  // must be first: the library uses this address
    JpegWriting* writing = nullptr;
  };

  bool writeRows(const ImagePixels& pixels, int quality, std::vector<std::uint8_t>& row);
  void describe(const ImagePixels& pixels, int quality);

  static JpegWriting& of(j_compress_ptr info) {
    return *reinterpret_cast<Destination*>(info->dest)->writing;
  }
  static void startBuffer(j_compress_ptr info) {
    info->dest->next_output_byte = of(info)._buffer.data();
    info->dest->free_in_buffer = of(info)._buffer.size();
  }
  static void emptyBuffer(j_compress_ptr info, std::size_t count) {
    JpegWriting& writing = of(info);
    if (!writing._output.append(writing._buffer.data(), count)) {
      JpegErrors::leaveBecause(reinterpret_cast<j_common_ptr>(info), "there is no room for it");
    }
    startBuffer(info);
  }
  static boolean emptyFullBuffer(j_compress_ptr info) {
    emptyBuffer(info, of(info)._buffer.size());
    return TRUE;
  }
  static void emptyLastBuffer(j_compress_ptr info) {
    emptyBuffer(info, of(info)._buffer.size() - info->dest->free_in_buffer);
  }

  PictureOutput _output;
  jpeg_compress_struct _info{};
  JpegErrors _errors;
  Destination _destination;
  std::array<std::uint8_t, 16384> _buffer{};
};

void JpegWriting::describe(const ImagePixels& pixels, int quality) {
  jpeg_create_compress(&_info);
  _destination.manager.init_destination = startBuffer;
  _destination.manager.empty_output_buffer = emptyFullBuffer;
  _destination.manager.term_destination = emptyLastBuffer;
  _info.dest = &_destination.manager;
  _info.image_width = pixels.width;
  _info.image_height = pixels.height;
  _info.input_components = bytesPerPixel;
  _info.in_color_space = JCS_EXT_RGBX;
  jpeg_set_defaults(&_info);
  jpeg_set_quality(&_info, quality, TRUE);
}

bool JpegWriting::writeRows(const ImagePixels& pixels, int quality,
                            std::vector<std::uint8_t>& row) {
  if (setjmp(_errors.back()) != 0) return false;
  describe(pixels, quality);
  jpeg_start_compress(&_info, TRUE);
  while (_info.next_scanline < _info.image_height) {
    layOverWhite(&pixels.rgba[bytesPerPixel * pixels.width * _info.next_scanline], row);
    JSAMPROW rows = row.data();
    jpeg_write_scanlines(&_info, &rows, 1);
  }
  jpeg_finish_compress(&_info);
  return true;
}

}  // namespace

EncodedPicture encodeJpegFile(const ImagePixels& pixels, double quality, std::size_t maximumBytes) {
  return JpegWriting(maximumBytes).write(pixels, quality);
}

}  // namespace platform
