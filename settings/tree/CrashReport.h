#pragma once

#include <string>

namespace settings {

// A platform exception that left a callback of the bundle; on a device it ends the application.
struct CrashReport {
  std::string name;
  std::string reason;
  std::string where;  // what the application was doing: "tap on \"Respring\""
};

}  // namespace settings
