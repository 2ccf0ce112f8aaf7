// Measures what happens between the choice of a photo and its thumbnail, for photos of 12 and of 48
// megapixels: the picture is decoded, tried as a PNG of at most 4 MiB, encoded as JPEG at falling
// quality until it fits, and stored in the preference file. Then the memory that this takes.
//
//   zentrova-image-benchmark [FOLDER]   files are made in FOLDER (default: the current one)
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

#include "appearance/BackgroundImage.h"
#include "benchmarks/Report.h"
#include "benchmarks/Timing.h"
#include "platform/foundation/DeviceFileSystem.h"
#include "platform/foundation/MutableDictionary.h"
#include "platform/foundation/Process.h"
#include "platform/foundation/PropertyList.h"
#include "platform/uikit/UIImageRepresentation.h"

namespace benchmarks {
namespace {

namespace fs = std::filesystem;
using platform::Data;
using platform::ImagePixels;
using platform::UIImage;
using Image = std::shared_ptr<UIImage>;

constexpr std::string_view devicePath = "/Preferences/settings.plist";

void check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "zentrova-image-benchmark: %s\n", what);
  std::exit(1);
}

// A device tree of the benchmark's own and a process that works in it.
class PhotoTree {
 public:
  explicit PhotoTree(fs::path root) : _root(std::move(root)), _scope(_process) {
    fs::create_directories(_root / "Preferences");
    _process.provide<platform::FileSystem>(
        std::make_shared<platform::DeviceFileSystem>(_root.string()));
  }
  PhotoTree(const PhotoTree&) = delete;
  PhotoTree& operator=(const PhotoTree&) = delete;

  const fs::path& root() const noexcept { return _root; }

 private:
  fs::path _root;
  platform::Process _process;
  platform::ProcessScope _scope;
};

struct Photo {
  const char* name;
  std::uint32_t width;
  std::uint32_t height;
};
constexpr Photo photos[] = {{"12 megapixels", 4032, 3024}, {"48 megapixels", 8064, 6048}};

// Soft forms with the grain of a sensor, the same at every run.
ImagePixels paint(const Photo& photo) {
  ImagePixels pixels{photo.width, photo.height, {}};
  pixels.rgba.resize(platform::bytesPerPixel * photo.width * photo.height);
  std::uint32_t state = 1;
  std::size_t at = 0;
  for (std::uint32_t y = 0; y < photo.height; ++y) {
    const double down = y * 40.0 / photo.height;
    for (std::uint32_t x = 0; x < photo.width; ++x) {
      const double across = x * 40.0 / photo.width;
      const double form = std::sin(across + std::sin(down)) * std::cos(down - 0.3 * across);
      state = state * 1664525 + 1013904223;
      const double grain = static_cast<double>(state >> 24U) / 255.0 * 16 - 8;
      for (const double base : {140.0, 120.0, 100.0}) {
        pixels.rgba[at++] =
            static_cast<std::uint8_t>(std::clamp(base + 90 * form + grain, 0., 255.));
      }
      pixels.rgba[at++] = 0xFF;
    }
  }
  return pixels;
}

// The photo as a camera's file.
Data cameraFile(const Photo& photo) {
  constexpr double cameraQuality = 0.92;
  const auto file =
      platform::UIImageJPEGRepresentation(UIImage::imageWithPixels(paint(photo), 1), cameraQuality);
  check(file.has_value(), "the photo cannot be made");
  return *file;
}

// The same as a camera that was held upright stores it: on its side, and Exif data that say so.
Data heldUpright(const Data& file) {
  constexpr std::string_view exif(
      "\xFF\xE1\0\x1E"
      "Exif\0\0MM\0\x2A\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\x06\0\0",
      32);
  std::vector<std::uint8_t> bytes(file.bytes().begin(), file.bytes().end());
  bytes.insert(bytes.begin() + 2, exif.begin(), exif.end());
  return Data(std::move(bytes));
}

void store(const Data& picture) {
  platform::MutableDictionary preferences(
      platform::dictionaryWithContentsOfFile(devicePath).value_or(platform::Dictionary()));
  preferences.setValueForKey(picture, "backgroundImage");
  check(preferences.writeToFileAtomically(devicePath), "the file cannot be written");
}

// Everything from the choice to the thumbnail that the page does.
void choose(const Data& file) {
  const auto picture = zentrova::encodeBackgroundImage(UIImage::imageWithData(file));
  check(picture.has_value(), "the photo cannot be encoded");
  store(*picture);
  keep(UIImage::imageWithData(*picture));
}

void measurePhoto(const Photo& photo) {
  constexpr std::size_t limit = zentrova::largestBackgroundImage;
  const Data file = cameraFile(photo);
  const Image chosen = UIImage::imageWithData(file);
  const Image turned = UIImage::imageWithData(heldUpright(file));
  check(turned && turned->pixelWidth() == photo.height, "the photo is not turned");
  const Image prepared = chosen->imageByPreparingForDisplay();
  const auto stored = zentrova::encodeBackgroundImage(chosen);
  check(stored.has_value(), "the photo cannot be encoded");
  std::printf("\n%s: a file of %.1f MB, stored as %.2f MB\n", photo.name,
              static_cast<double>(file.size()) / 1e6, static_cast<double>(stored->size()) / 1e6);
  const std::vector<Contender> parts = {
      {"choice to thumbnail", [&] { choose(file); }},
      {"decode", [&] { keep(chosen->decodedPixels()); }},
      {"decode and turn upright", [&] { keep(turned->decodedPixels()); }},
      {"PNG, given up at 4 MiB", [&] { keep(UIImagePNGRepresentation(prepared, limit)); }},
      {"JPEG at 0.8, given up at 4 MiB",
       [&] { keep(UIImageJPEGRepresentation(prepared, 0.8, limit)); }},
      {"store, write the file", [&] { store(*stored); }}};
  report(photo.name, parts, race(parts, 0.1, 5));
  const std::vector<Contender> whole = {
      {"PNG to its end", [&] { keep(UIImagePNGRepresentation(prepared)); }},
      {"JPEG at 0.8 to its end", [&] { keep(UIImageJPEGRepresentation(prepared, 0.8)); }}};
  report("for comparison", whole, race(whole, 0.1, 1));
}

// Resident memory in KB: what it is now, or the most it has been since it was last reset.
long residentMemory(const char* name) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.starts_with(name)) return std::atol(line.c_str() + std::string_view(name).size());
  }
  return 0;
}

// A child, so that what was measured before does not count.
void reportMemory(const fs::path& root, const Photo& photo) {
  {
    const Data file = cameraFile(photo);
    std::ofstream(root / "photo.jpg", std::ios::binary)
        << std::string_view(reinterpret_cast<const char*>(file.bytes().data()), file.size());
  }
  std::printf("\npeak memory, %s\n", photo.name);
  std::fflush(stdout);
  const std::string program = fs::read_symlink("/proc/self/exe").string();
  check(std::system((program + " --memory " + root.string()).c_str()) == 0, "the child fails");
}

int memoryChild(const fs::path& root) {
  const PhotoTree tree(root);
  const Data file(std::string_view(
      platform::Process::current().service<platform::FileSystem>().read("/photo.jpg").bytes));
  std::ofstream("/proc/self/clear_refs") << 5;
  const long before = residentMemory("VmRSS:");
  choose(file);
  const long peak = residentMemory("VmHWM:");
  std::printf("  before %ld KB, peak %ld KB: %.1f MB more\n", before, peak,
              static_cast<double>(peak - before) / 1024.0);
  return 0;
}

void run(const fs::path& folder) {
  const PhotoTree tree(folder / ("zentrova-image-" + std::to_string(getpid())));
  for (const Photo& photo : photos) measurePhoto(photo);
  for (const Photo& photo : photos) reportMemory(tree.root(), photo);
  fs::remove_all(tree.root());
}

}  // namespace
}  // namespace benchmarks

int main(int count, char** arguments) {
  if (count > 2 && std::string_view(arguments[1]) == "--memory") {
    return benchmarks::memoryChild(arguments[2]);
  }
  benchmarks::run(count > 1 ? arguments[1] : ".");
  return 0;
}
