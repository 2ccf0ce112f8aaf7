#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "settings/application/ApplicationObserver.h"

namespace settings {

class SettingsProcess;

// Sees from one look to the next whether a page was pushed or popped, something presented or
// dismissed, or a table dissolved into its new look.
class StageWatch {
 public:
  using Report = std::function<void(TransitionKind, double durationSeconds)>;

  // Remembers what is shown, telling nobody: after a new process started.
  void reset(SettingsProcess& process);
  void look(SettingsProcess& process, const Report& report);

 private:
  struct Stage {
    std::vector<std::uint64_t> pages;
    std::optional<std::uint64_t> presented;
    std::uint64_t dissolve = 0;  // the number of the last one
    double dissolveSeconds = 0;
  };
  static Stage stageOf(SettingsProcess& process);

  Stage _stage;
};

}  // namespace settings
