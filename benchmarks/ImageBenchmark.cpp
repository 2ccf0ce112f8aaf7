// Measures the picture codecs on photos of 12 and 48 megapixels: decoding, rotating, detecting that
// the PNG is larger than 4 MiB (compared with writing the whole file), and writing a JPEG.
//
//   zentrova-image-benchmark
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "benchmarks/Report.h"
#include "benchmarks/Timing.h"
#include "platform/uikit/images/ImageCodecs.h"

namespace benchmarks {
namespace {

using platform::ImageCodecs;
using platform::ImagePixels;
using File = std::vector<std::uint8_t>;

constexpr std::size_t limit = 4UL * 1024 * 1024;

void check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "zentrova-image-benchmark: %s\n", what);
  std::exit(1);
}

struct Photo {
  const char* name;
  std::uint32_t width;
  std::uint32_t height;
};

// Makes soft shapes with the noise of a sensor, the same in every run.
ImagePixels paint(const Photo& photo) {
  ImagePixels pixels{photo.width, photo.height, {}};
  pixels.rgba.resize(platform::bytesPerPixel * photo.width * photo.height);
  std::uint32_t state = 1;
  std::size_t at = 0;
  for (std::uint32_t y = 0; y < photo.height; ++y) {
    const double down = y * 40.0 / photo.height;
    for (std::uint32_t x = 0; x < photo.width; ++x) {
      const double across = x * 40.0 / photo.width;
      const double form = 90 * std::sin(across + std::sin(down)) * std::cos(down - 0.3 * across);
      for (const double base : {140.0, 120.0, 100.0}) {
        state = state * 1664525 + 1013904223;
        const double grain = static_cast<double>(state >> 24U) / 16 - 8;
        pixels.rgba[at++] = static_cast<std::uint8_t>(std::clamp(base + form + grain, 0.0, 255.0));
      }
      pixels.rgba[at++] = 0xFF;
    }
  }
  return pixels;
}

// Returns the file as stored by a camera that was held upright: its Exif data say that the picture
// is rotated.
File heldUpright(File file) {
  constexpr std::string_view exif(
      "\xFF\xE1\0\x1E"
      "Exif\0\0MM\0\x2A\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\x06\0\0",
      32);
  file.insert(file.begin() + 2, exif.begin(), exif.end());
  return file;
}

void measurePhoto(ImageCodecs& codecs, const Photo& photo) {
  constexpr double cameraQuality = 0.92;
  constexpr double seconds = 1.0;
  const ImagePixels pixels = paint(photo);
  const File file = codecs.encodeJpeg(pixels, cameraQuality, ImageCodecs::noLimit).bytes;
  const File upright = heldUpright(file);
  const auto turned = codecs.decode(upright).pixels;
  check(turned && turned->width == photo.height, "the photo is not turned");
  std::printf("\n%s, a file of %.1f MB\n", photo.name, static_cast<double>(file.size()) / 1e6);
  const std::vector<Contender> reading = {
      {"decode", [&] { keep(codecs.decode(file)); }},
      {"decode and turn upright", [&] { keep(codecs.decode(upright)); }}};
  report("reading", reading, race(reading, seconds, 5));
  const std::vector<Contender> writing = {
      {"PNG, given up at 4 MiB", [&] { keep(codecs.encodePng(pixels, limit)); }},
      {"PNG to its end", [&] { keep(codecs.encodePng(pixels, ImageCodecs::noLimit)); }},
      {"JPEG at 0.8", [&] { keep(codecs.encodeJpeg(pixels, 0.8, ImageCodecs::noLimit)); }}};
  report("writing", writing, race(writing, seconds, 3));
}

}  // namespace
}  // namespace benchmarks

int main() {
  platform::LibraryImageCodecs codecs;
  benchmarks::measurePhoto(codecs, {"12 megapixels", 4032, 3024});
  benchmarks::measurePhoto(codecs, {"48 megapixels", 8064, 6048});
  return 0;
}
