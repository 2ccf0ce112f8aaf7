#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "settings/application/ApplicationObserver.h"

namespace settings {

class SettingsProcess;

// Detects, from one look to the next, whether a page was pushed or popped, something was presented
// or dismissed, or a table was cross-dissolved.
class StageWatch {
 public:
  using Report = std::function<void(TransitionKind, double durationSeconds)>;

  // Records what is shown without notifying: after a new process started.
  void reset(SettingsProcess& process);
  void look(SettingsProcess& process, const Report& report);

 private:
  struct Stage {
    std::vector<std::uint64_t> pages;
    std::optional<std::uint64_t> presented;
    std::uint64_t dissolve = 0;  // number of the last cross-dissolve
    double dissolveSeconds = 0;
  };
  static Stage stageOf(SettingsProcess& process);

  Stage _stage;
};

}  // namespace settings
