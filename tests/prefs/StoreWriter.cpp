// Writes with the store until it is killed. Started by kill_writer.py and full_disk.py.
//
//   store-writer TREE count          increments "counter" forever
//   store-writer TREE fill BYTES     sets "filling" to that many bytes of data, once
//
// TREE is a device tree. Removes the temporary files of earlier writers, then prints "ready", then
// starts to write.
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/FoundationClasses.h"
#include "platform/foundation/files/DeviceFileSystem.h"
#include "platform/foundation/log/MemoryLog.h"
#include "platform/foundation/objects/Process.h"
#include "prefs/HBPreferences.h"

namespace {

using zentrova::HBPreferences;

constexpr std::string_view folder = "/var/jb/var/mobile/Library/Preferences";

void count(HBPreferences& store) {
  for (auto counter = store.integerForKey("counter");; ++counter) {
    store.setObject(counter + 1, "counter");
  }
}

void fill(HBPreferences& store, std::size_t size) {
  store.setObject(platform::Data(std::string(size, 'z')), "filling");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fputs("usage: store-writer TREE count | fill BYTES\n", stderr);
    return 2;
  }
  platform::Process process;
  const platform::ProcessScope scope(process);
  platform::registerFoundationClasses(process.classes());
  const auto files = std::make_shared<platform::DeviceFileSystem>(argv[1]);
  process.provide<platform::FileSystem>(files);
  process.provide<platform::Log>(std::make_shared<platform::MemoryLog>());
  files->removeStaleTemporaries(folder);
  const auto store = HBPreferences::preferencesForIdentifier(zentrova::preferencesDomain);
  std::puts("ready");
  std::fflush(stdout);
  if (std::string_view(argv[2]) == "count") count(*store);
  if (std::string_view(argv[2]) == "fill" && argc == 4) fill(*store, std::stoul(argv[3]));
}
