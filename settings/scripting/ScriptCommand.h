#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "settings/scripting/LineReader.h"

namespace settings {

class ScriptContext;

// The result of one line of a script.
struct StepOutcome {
  bool ok = true;
  std::string message;  // the error if `ok` is false
  // Set for a failed expectation.
  std::optional<std::string> expected;
  std::optional<std::string> actual;

  static StepOutcome failed(std::string message) { return {false, std::move(message), {}, {}}; }
  static StepOutcome notOpen() { return failed("nothing is open; use `open` first"); }
  static StepOutcome unexpected(std::string expected, std::string actual) {
    return {false, "expectation failed", std::move(expected), std::move(actual)};
  }
};

// A parsed line of a script: performs the command.
using Step = std::function<StepOutcome(ScriptContext&)>;

// A script command. Its name has one or more words. `parse` reads the rest of the line and returns
// the step; the step must be ignored if the reader has an error afterwards.
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

// All commands, in the order of the help.
const ScriptCommands& scriptCommands();
// Reads the name of the command at the start of the line. Returns null and sets the reader's error
// if there is no such command.
const ScriptCommand* takeCommand(LineReader& reader);

}  // namespace settings
