// Measures the store's cycle (load the preference file, set one boolean, write and sync it, rename)
// compared with bare system calls on the same files in the same run; reading a page of 24 colour
// swatches; and the memory use of loading and saving.
//
//   zentrova-store-benchmark [FOLDER]   writes its files to FOLDER (default: current)
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "benchmarks/PropertyListSamples.h"
#include "benchmarks/Report.h"
#include "benchmarks/Timing.h"
#include "platform/foundation/files/DeviceFileSystem.h"
#include "platform/foundation/objects/MutableDictionary.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/propertylist/PropertyList.h"

namespace benchmarks {
namespace {

namespace fs = std::filesystem;
using platform::Dictionary;

constexpr std::string_view devicePath = "/Preferences/settings.plist";

void check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "zentrova-store-benchmark: %s\n", what);
  std::exit(1);
}

// A device tree for the benchmark and a process that works in it.
class Tree {
 public:
  explicit Tree(const fs::path& folder)
      : _root(folder / ("zentrova-store-" + std::to_string(getpid()))), _scope(_process) {
    fs::create_directories(_root / "Preferences");
    _process.provide<platform::FileSystem>(
        std::make_shared<platform::DeviceFileSystem>(_root.string()));
  }
  ~Tree() { fs::remove_all(_root); }
  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;

  std::string file() const { return (_root / "Preferences/settings.plist").string(); }
  void put(const std::string& bytes) const { std::ofstream(file(), std::ios::binary) << bytes; }

 private:
  fs::path _root;
  platform::Process _process;
  platform::ProcessScope _scope;
};

// The work of a page for a tap.
void storeCycle(bool value) {
  auto loaded = platform::dictionaryWithContentsOfFile(devicePath);
  check(loaded.has_value(), "the file cannot be read");
  platform::MutableDictionary store(std::move(*loaded));
  loaded.reset();
  store.setValueForKey(platform::Value(value), "tapped");
  check(platform::writeToFileAtomically(store, devicePath), "the file cannot be written");
}

// The minimum that any program must do: read, write a temporary file, fdatasync, rename.
void bareCycle(const std::string& path, std::string& buffer) {
  const int from = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  struct stat status {};
  check(from >= 0 && fstat(from, &status) == 0, "the file cannot be opened");
  buffer.resize(static_cast<std::size_t>(status.st_size));
  check(read(from, buffer.data(), buffer.size()) == status.st_size, "the file cannot be read");
  close(from);
  const std::string aside = path + ".aside";
  const int to = open(aside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  check(to >= 0, "the temporary file cannot be made");
  check(write(to, buffer.data(), buffer.size()) == status.st_size, "the file cannot be written");
  check(fdatasync(to) == 0, "fdatasync fails");
  close(to);
  check(rename(aside.c_str(), path.c_str()) == 0, "rename fails");
}

void measureCycle(const Tree& tree, const char* name, const Dictionary& entries) {
  tree.put(platform::writeXmlPropertyList(entries).bytes);
  bool value = false;
  std::string buffer;
  measure(std::string("store cycle, ") + name,
          {{"bare system calls", [&] { bareCycle(tree.file(), buffer); }},
           {"load, one boolean, save", [&] { storeCycle(value = !value); }}},
          6.0);
}

void measureSwatches(const Tree& tree) {
  tree.put(platform::writeXmlPropertyList(imagePreferences()).bytes);
  measure("a page of 24 swatches with an image stored",
          {{"24 times the file, one colour each", [] {
              for (int i = 0; i < 24; ++i) {
                const auto entries = platform::dictionaryWithContentsOfFile(devicePath);
                check(entries.has_value(), "the file cannot be read");
                keep(entries->valueForKey("moduleOrder"));
              }
            }}});
}

// Returns the resident memory in KB: the current value, or the maximum since the last reset.
long residentMemory(const char* name) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.starts_with(name)) return std::atol(line.c_str() + std::string_view(name).size());
  }
  return 0;
}

// Uses a child process, so that earlier measurements do not count.
void reportMemory(const Tree& tree) {
  tree.put(platform::writeXmlPropertyList(imagePreferences()).bytes);
  std::printf("\npeak memory, image, load and save\n");
  std::fflush(stdout);
  const std::string program = fs::read_symlink("/proc/self/exe").string();
  check(std::system((program + " --memory " + tree.file()).c_str()) == 0, "the child fails");
}

int memoryChild(const fs::path& file) {
  platform::Process process;
  const platform::ProcessScope scope(process);
  process.provide<platform::FileSystem>(
      std::make_shared<platform::DeviceFileSystem>(file.parent_path().parent_path().string()));
  std::ofstream("/proc/self/clear_refs") << 5;
  const long before = residentMemory("VmRSS:");
  storeCycle(true);
  const long peak = residentMemory("VmHWM:");
  constexpr long valueSize = 4096;
  std::printf("  before %ld KB, peak %ld KB: %.2f MB, %.2f MB beyond the value itself\n", before,
              peak, static_cast<double>(peak - before) / 1024.0,
              static_cast<double>(peak - before - valueSize) / 1024.0);
  return 0;
}

void run(const fs::path& folder) {
  const Tree tree(folder);
  measureCycle(tree, "small", smallPreferences());
  measureCycle(tree, "image", imagePreferences());
  measureSwatches(tree);
  reportMemory(tree);
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
