#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {
class Process;
}

namespace settings {

// A settings bundle that was loaded into a process, or why it could not be loaded.
struct LoadedBundle {
  // Keeps the bundle's code in memory. Release it after the process and all its objects.
  std::shared_ptr<void> code;
  std::string principalClass;          // registered in the process's classes
  std::string title;                   // display name; may be empty
  std::optional<std::string> problem;  // which file, what is wrong, what to do
};

// Loads the bundle at a device path into the current process: reads Info.plist, loads the
// executable that it names, lets it register its classes, and looks up the principal class. Never
// raises.
//
// Threads: the main thread, before anything else uses the process's classes.
LoadedBundle loadBundle(platform::Process& process, std::string_view path);

}  // namespace settings
