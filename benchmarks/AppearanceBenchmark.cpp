// Measures the waiting times on the appearance pages: opening a list of 24 colours while an image
// of 4 MiB is stored (each swatch reads the preference file again), and processing a photo from the
// choice to the thumbnail, including its memory use.
//
//   zentrova-appearance-benchmark [FOLDER]   writes its files to FOLDER (default: current)
//
// Exits with 1 if the list does not open within one frame (median processor time).
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

#include "appearance/HBColorPickerTableCell.h"
#include "appearance/ZVRCustomizeColorListViewController.h"
#include "appearance/ZVRCustomizeListController.h"
#include "benchmarks/PropertyListSamples.h"
#include "benchmarks/Report.h"
#include "benchmarks/Timing.h"
#include "platform/foundation/FoundationClasses.h"
#include "platform/foundation/files/DeviceFileSystem.h"
#include "platform/foundation/log/MemoryLog.h"
#include "platform/foundation/objects/DeviceTraits.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/scheduling/VirtualScheduler.h"
#include "platform/preferences/BundleInfo.h"
#include "platform/preferences/PreferencesClasses.h"
#include "platform/uikit/UIKitClasses.h"
#include "platform/uikit/controllers/UIImagePickerController.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "platform/uikit/controllers/UIWindow.h"
#include "platform/uikit/images/UIImageRepresentation.h"

namespace benchmarks {
namespace {

namespace fs = std::filesystem;
using platform::UIImage;
using zentrova::ZVRCustomizeColorListViewController;
using zentrova::ZVRCustomizeListController;

constexpr std::string_view bundleFolder = "/var/jb/Library/PreferenceBundles/ZentrovaPrefs.bundle";
constexpr std::string_view preferenceFolder = "/var/jb/var/mobile/Library/Preferences";

constexpr double frameSeconds = 0.016;

void check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "zentrova-appearance-benchmark: %s\n", what);
  std::exit(1);
}

// A device with the product's lists and a window with an empty page, in a separate process.
class Device {
 public:
  explicit Device(const fs::path& folder)
      : _root(folder / ("zentrova-appearance-" + std::to_string(getpid()))), _scope(_process) {
    fs::create_directories(in(bundleFolder));
    fs::create_directories(in(preferenceFolder));
    for (const char* list : {"Customize.plist", "GlobalColors.plist"}) {
      fs::copy_file(fs::path(ZENTROVA_RESOURCES) / list, in(bundleFolder) / list);
    }
    provideServices();
    registerClasses();
    makeWindow();
  }
  ~Device() { fs::remove_all(_root); }
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;

  void storeImage() const {
    const std::string file = std::string(zentrova::preferencesDomain) + ".plist";
    std::ofstream(in(preferenceFolder) / file, std::ios::binary)
        << platform::writeXmlPropertyList(imagePreferences()).bytes;
  }
  void push(const std::shared_ptr<platform::UIViewController>& page) const {
    _navigation->pushViewController(page, true);
    _window->layoutIfNeeded();
  }
  void pop() const {
    _navigation->popViewControllerAnimated(false);
    _window->layoutIfNeeded();
    _scheduler->advance(1);
  }
  // Large enough to show all rows of a list, or the size of a phone.
  void setScreenHeight(double points) const {
    _traits->screenHeight = points;
    _window->traitsDidChange();
    _window->layoutIfNeeded();
  }
  void layout() const { _window->layoutIfNeeded(); }
  platform::VirtualScheduler& scheduler() const { return *_scheduler; }

 private:
  fs::path in(std::string_view path) const { return _root / path.substr(1); }

  void provideServices() {
    _process.provide<platform::Scheduler>(_scheduler);
    _process.provide<platform::FileSystem>(
        std::make_shared<platform::DeviceFileSystem>(_root.string()));
    _process.provide<platform::Log>(std::make_shared<platform::MemoryLog>());
    _process.provide<platform::DeviceTraits>(_traits);
    _process.provide<platform::BundleInfo>(
        std::make_shared<platform::BundleInfo>(platform::BundleInfo{std::string(bundleFolder)}));
  }
  void registerClasses() {
    auto& classes = _process.classes();
    platform::registerFoundationClasses(classes);
    platform::registerUIKitClasses(classes);
    platform::registerPreferencesClasses(classes);
    zentrova::HBPreferences::registerClass(classes);
    zentrova::HBRootListController::registerClass(classes);
    zentrova::HBColorPickerTableCell::registerClass(classes);
    ZVRCustomizeColorListViewController::registerClass(classes);
    ZVRCustomizeListController::registerClass(classes);
  }
  void makeWindow() {
    const auto below = platform::make<platform::UIViewController>();
    _navigation =
        platform::make(&platform::UINavigationController::initWithRootViewController, below);
    _window = platform::make<platform::UIWindow>();
    _window->setRootViewController(_navigation);
    _window->makeKeyAndVisible();
    _window->layoutIfNeeded();
  }

  fs::path _root;
  platform::Process _process;
  platform::ProcessScope _scope;
  std::shared_ptr<platform::VirtualScheduler> _scheduler =
      std::make_shared<platform::VirtualScheduler>(&_process);
  std::shared_ptr<platform::DeviceTraits> _traits = std::make_shared<platform::DeviceTraits>();
  std::shared_ptr<platform::UINavigationController> _navigation;
  std::shared_ptr<platform::UIWindow> _window;
};

// Elapsed time and processor time in seconds. Only the elapsed time includes other work of the
// machine.
struct Taken {
  double clock = 0;
  double processor = 0;
};

Taken instant() {
  timespec used{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
  return {now(), static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) * 1e-9};
}

Taken operator-(const Taken& end, const Taken& start) {
  return {end.clock - start.clock, end.processor - start.processor};
}

// Measures from the tap on "Colors for Both" to the page with its rows.
Taken openColors(const Device& device, std::size_t rowsInSight) {
  const Taken start = instant();
  const auto page = platform::make(&ZVRCustomizeColorListViewController::initWithStyle, 0);
  device.push(page);
  const Taken taken = instant() - start;
  check(page->table()->visibleCells().size() >= rowsInSight, "too few rows are in sight");
  device.pop();
  return taken;
}

void printSpread(const char* name, std::vector<double> seconds) {
  std::sort(seconds.begin(), seconds.end());
  std::printf("  %-34s best %s  median %s  95 of 100 within %s\n", name,
              inUnits(seconds.front()).c_str(), inUnits(seconds[seconds.size() / 2]).c_str(),
              inUnits(seconds[seconds.size() * 95 / 100]).c_str());
}

void measureColors(const Device& device, const char* name, double screenHeight,
                   std::size_t rowsInSight) {
  device.setScreenHeight(screenHeight);
  constexpr std::size_t rounds = 100;
  std::vector<double> clock;
  std::vector<double> processor;
  for (std::size_t i = 0; i < rounds; ++i) {
    const Taken taken = openColors(device, rowsInSight);
    clock.push_back(taken.clock);
    processor.push_back(taken.processor);
  }
  printSpread(name, clock);
  printSpread("  processor time", processor);
  std::sort(processor.begin(), processor.end());
  check(processor[rounds / 2] < frameSeconds, "the page does not open within one frame");
}

// --- The background image ---

// Makes a photo that is as hard to encode as a camera's: soft shapes with noise.
std::shared_ptr<UIImage> makePhoto(std::uint32_t width, std::uint32_t height) {
  platform::ImagePixels pixels{width, height, {}};
  pixels.rgba.resize(std::size_t{width} * height * 4, 255);
  std::minstd_rand random(11);
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::uint32_t x = 0; x < width; ++x) {
      const double shape = 96 + 64 * std::sin(x / 210.0) + 64 * std::cos(y / 170.0 + x / 900.0);
      auto* pixel = &pixels.rgba[(std::size_t{y} * width + x) * 4];
      for (int channel = 0; channel < 3; ++channel) {
        const auto noise = static_cast<double>(random() % 13);
        pixel[channel] = static_cast<std::uint8_t>(std::clamp(shape + noise, 0.0, 255.0));
      }
    }
  }
  constexpr double cameraQuality = 0.9;
  const auto picture = UIImage::imageWithPixels(std::move(pixels), 1);
  const auto file = platform::UIImageJPEGRepresentation(picture, cameraQuality);
  check(file.has_value(), "the photo cannot be made");
  return UIImage::imageWithData(*file);
}

// Returns the resident memory in KB: the current value, or the maximum since the last reset.
long residentKilobytes(std::string_view name) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.starts_with(name)) return std::atol(line.c_str() + name.size());
  }
  return 0;
}

void printStep(const char* name, const Taken& taken) {
  std::printf("    %-34s %s, processor time %s\n", name, inUnits(taken.clock).c_str(),
              inUnits(taken.processor).c_str());
}

void measurePhoto(const fs::path& folder, std::uint32_t width, std::uint32_t height) {
  const Device device(folder);
  const auto photo = makePhoto(width, height);
  const auto page = platform::make<ZVRCustomizeListController>();
  device.push(page);
  std::ofstream("/proc/self/clear_refs") << 5;
  const long before = residentKilobytes("VmRSS:");
  const Taken start = instant();
  page->didFinishPickingMediaWithInfo(
      nullptr, {{platform::UIImagePickerControllerOriginalImage, platform::Value(photo)}});
  const Taken chosen = instant();
  device.scheduler().runAllBackground();
  const Taken stored = instant();
  device.scheduler().runMain();
  device.layout();
  const Taken shown = instant();
  const auto cell = page->cachedCellForSpecifierID("backgroundImageTextCell");
  check(cell && cell->accessoryView(), "there is no thumbnail");
  std::printf("  %.0f megapixels, %.1f MB\n", width * static_cast<double>(height) / 1e6,
              static_cast<double>(photo->encodedData()->size()) / 1e6);
  printStep("main thread: dim the picker", chosen - start);
  printStep("background: encode and store", stored - chosen);
  printStep("main thread: show the thumbnail", shown - stored);
  std::printf("    peak memory %.0f MB\n",
              static_cast<double>(residentKilobytes("VmHWM:") - before) / 1024.0);
}

// Uses a child process for each photo, so that their memory is measured separately.
void measurePhotos(const fs::path& folder) {
  std::printf("\na photo from the choice to the thumbnail, and the peak memory beyond the photo\n");
  std::fflush(stdout);
  const std::string program = fs::read_symlink("/proc/self/exe").string();
  for (const char* size : {"4032 3024", "8064 6048"}) {
    const std::string command = program + " --photo " + folder.string() + " " + size;
    check(std::system(command.c_str()) == 0, "the child fails");
  }
}

void run(const fs::path& folder) {
  {
    const Device device(folder);
    device.storeImage();
    std::printf("\na page of 24 colours opens, with an image of 4 MiB stored\n");
    measureColors(device, "all rows in sight", 2000, 24);
    measureColors(device, "on a phone of 844 points", 844, 10);
  }
  measurePhotos(folder);
}

}  // namespace
}  // namespace benchmarks

int main(int count, char** arguments) {
  if (count == 5 && std::string_view(arguments[1]) == "--photo") {
    benchmarks::measurePhoto(arguments[2], static_cast<std::uint32_t>(std::atol(arguments[3])),
                             static_cast<std::uint32_t>(std::atol(arguments[4])));
    return 0;
  }
  benchmarks::run(count > 1 ? arguments[1] : ".");
  return 0;
}
