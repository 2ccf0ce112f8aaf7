#pragma once

namespace settings {

enum class Time {
  virtualClock,  // stands still until `advance`; background work runs where `background` says
  real,
};

}  // namespace settings
