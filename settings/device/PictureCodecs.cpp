// The two encoders of the pictures that a new device tree holds.

#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <jpeglib.h>
#include <memory>
#include <png.h>

#include "settings/device/Painting.h"

namespace settings {

namespace {

// What the JPEG library works with; on an error it jumps back to where the work began.
struct JpegWork {
  jpeg_compress_struct info{};
  jpeg_error_mgr errors{};
  std::jmp_buf back{};
  unsigned char* bytes = nullptr;
  unsigned long size = 0;

  JpegWork() = default;
  JpegWork(const JpegWork&) = delete;
  JpegWork& operator=(const JpegWork&) = delete;
  ~JpegWork() {
    jpeg_destroy_compress(&info);
    std::free(bytes);
  }
};

void jumpBack(j_common_ptr common) {
  std::longjmp(static_cast<JpegWork*>(common->client_data)->back, 1);
}

void keepSilent(j_common_ptr) {}

std::vector<JSAMPLE> withoutAlpha(const Canvas& canvas) {
  std::vector<JSAMPLE> colours;
  colours.reserve(canvas.pixels().size() / 4 * 3);
  for (std::size_t at = 0; at < canvas.pixels().size(); at += 4) {
    const auto* pixel = &canvas.pixels()[at];
    colours.insert(colours.end(), pixel, pixel + 3);
  }
  return colours;
}

// True when the picture is in work.bytes. Nothing here needs a destructor: an error jumps out.
bool compress(JpegWork& work, std::vector<JSAMPLE>& colours, int width, int height, int quality) {
  if (setjmp(work.back)) return false;
  jpeg_create_compress(&work.info);
  jpeg_mem_dest(&work.info, &work.bytes, &work.size);
  work.info.image_width = static_cast<JDIMENSION>(width);
  work.info.image_height = static_cast<JDIMENSION>(height);
  work.info.input_components = 3;
  work.info.in_color_space = JCS_RGB;
  jpeg_set_defaults(&work.info);
  jpeg_set_quality(&work.info, quality, TRUE);
  jpeg_start_compress(&work.info, TRUE);
  while (work.info.next_scanline < work.info.image_height) {
    JSAMPROW row = &colours[static_cast<std::size_t>(work.info.next_scanline) *
                            static_cast<std::size_t>(width) * 3];
    jpeg_write_scanlines(&work.info, &row, 1);
  }
  jpeg_finish_compress(&work.info);
  return true;
}

}  // namespace

std::string encodePng(const Canvas& canvas) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(canvas.width());
  image.height = static_cast<png_uint_32>(canvas.height());
  image.format = PNG_FORMAT_RGBA;
  png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
  std::string bytes(size, '\0');
  if (!png_image_write_to_memory(&image, bytes.data(), &size, 0, canvas.pixels().data(), 0,
                                 nullptr)) {
    return {};
  }
  bytes.resize(size);
  return bytes;
}

std::string encodeJpeg(const Canvas& canvas, int quality) {
  JpegWork work;
  work.info.err = jpeg_std_error(&work.errors);
  work.errors.error_exit = jumpBack;
  work.errors.output_message = keepSilent;
  work.info.client_data = &work;
  std::vector<JSAMPLE> colours = withoutAlpha(canvas);
  if (!compress(work, colours, canvas.width(), canvas.height(), quality)) return {};
  return {reinterpret_cast<const char*>(work.bytes), work.size};
}

}  // namespace settings
