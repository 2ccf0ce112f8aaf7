#include <nlohmann/json.hpp>

#include "settings/scripting/ScriptCommand.h"
#include "settings/scripting/ScriptContext.h"

namespace settings {
namespace {

Step parseAdvance(LineReader& reader) {
  const double seconds = reader.number("SECONDS");
  if (seconds < 0) reader.fail("SECONDS must be 0 or more; time cannot go back");
  return [seconds](ScriptContext& context) {
    return outcomeOf(context.application().advance(seconds));
  };
}

Step parseBackground(LineReader& reader) {
  std::optional<std::size_t> count;
  if (!reader.skip("all")) count = reader.index("N");
  return [count](ScriptContext& context) {
    if (!context.application().isOpen()) return StepOutcome::notOpen();
    const std::size_t ran = context.application().runBackground(count);
    if (!count || ran == *count) return StepOutcome{};
    return StepOutcome::failed("only " + std::to_string(ran) + " of " + std::to_string(*count) +
                               " pieces of background work were waiting");
  };
}

}  // namespace

ScriptCommands timeCommands() {
  return {
      {"advance", "advance SECONDS", "advances the clock and runs the work that becomes due",
       &parseAdvance},
      {"background", "background N|all", "runs queued background work", &parseBackground},
  };
}

}  // namespace settings
