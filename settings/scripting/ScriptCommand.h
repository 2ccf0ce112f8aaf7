#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "settings/scripting/LineReader.h"

namespace settings {

class ScriptContext;

// How a line of a script went.
struct StepOutcome {
  bool ok = true;
  std::string message;  // what is wrong, where it did not go well
  // A failed expectation says both.
  std::optional<std::string> expected;
  std::optional<std::string> actual;

  static StepOutcome failed(std::string message) { return {false, std::move(message), {}, {}}; }
  static StepOutcome notOpen() { return failed("nothing is open; use `open` first"); }
  static StepOutcome unexpected(std::string expected, std::string actual) {
    return {false, "expectation failed", std::move(expected), std::move(actual)};
  }
};

// A line of a script that was understood: what to do when its turn comes.
using Step = std::function<StepOutcome(ScriptContext&)>;

// A command, whose name is one word or more: how it is written, and how what follows its name
// becomes a step. What `parse` gives counts only where the reader has no error afterwards.
struct ScriptCommand {
  std::string name;
  std::string usage;
  std::string text;
  Step (*parse)(LineReader&);
};

using ScriptCommands = std::vector<ScriptCommand>;

ScriptCommands deviceCommands();       // the device and the process
ScriptCommands handCommands();         // what a user's hand does
ScriptCommands presentedCommands();    // sheets and pickers
ScriptCommands controlCommands();      // switches, segments, sliders, texts
ScriptCommands timeCommands();         // the clock and background work
ScriptCommands messageCommands();      // operations and values by name
ScriptCommands reportCommands();       // what is there, printed
ScriptCommands requestCommands();      // the tasks of the URL session
ScriptCommands expectationCommands();  // "expect ..."

// All commands, in the order in which help shows them.
const ScriptCommands& scriptCommands();
// The command that the line starts with, its name taken off the reader. Null, with the reader's
// error set, where there is none.
const ScriptCommand* takeCommand(LineReader& reader);

}  // namespace settings
