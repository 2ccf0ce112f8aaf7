#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace platform {

enum class UserInterfaceIdiom : std::int8_t { unspecified = -1, phone = 0, pad = 1 };
enum class UserInterfaceStyle : std::int8_t { light = 1, dark = 2 };

struct SystemVersion {
  int major = 15;
  int minor = 4;
  int patch = 0;
  // The platform's version test: returns whether the system has at least this version.
  bool isAtLeast(int otherMajor, int otherMinor = 0, int otherPatch = 0) const noexcept;
  std::string text() const;  // such as "15.4", "13.7" or "15.4.1"
  friend bool operator==(const SystemVersion&, const SystemVersion&) = default;
};

// Properties of the device and settings of its user. A service of the process. The application may
// change it on the main thread at any time.
struct DeviceTraits {
  UserInterfaceIdiom idiom = UserInterfaceIdiom::phone;
  SystemVersion systemVersion;
  double screenWidth = 390;   // points
  double screenHeight = 844;  // points
  double screenScale = 3;     // pixels per point
  UserInterfaceStyle appearance = UserInterfaceStyle::light;
  double textScale = 1.0;         // the user's text size; 1 is standard
  std::string tint = "007AFFFF";  // RRGGBBAA, the tint colour of windows
};

}  // namespace platform
