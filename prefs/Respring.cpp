#include "prefs/Respring.h"

#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/files/FileSystem.h"
#include "platform/foundation/objects/DeviceTraits.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/programs/Programs.h"

namespace zentrova {

namespace {

constexpr std::string_view reloadProgram = "/var/jb/usr/bin/sbreload";
constexpr std::string_view killProgram = "/var/jb/usr/bin/killall";

// From system version 15 on, sbreload does not bring the home screen back.
bool canReload() {
  auto& process = platform::Process::current();
  return process.service<platform::FileSystem>().fileExists(reloadProgram) &&
         !process.service<platform::DeviceTraits>().systemVersion.isAtLeast(15, 0, 0);
}

// Starts the program with a null environment and ignores the result.
void spawn(std::string_view path, const std::vector<std::string>& arguments) {
  int processIdentifier = 0;
  platform::posix_spawn(&processIdentifier, path, arguments, std::nullopt);
}

}  // namespace

void restartHomeScreen() {
  if (canReload()) {
    spawn(reloadProgram, {"sbreload"});
  } else {
    spawn(killProgram, {"killall", "-9", "SpringBoard"});
  }
}

}  // namespace zentrova
