#pragma once

namespace settings {

enum class Time {
  virtualClock,  // advances only by `advance`; background work runs only by `background`
  real,
};

}  // namespace settings
