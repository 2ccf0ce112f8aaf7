#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <nlohmann/json.hpp>
#include <string>

#include "settings/application/Application.h"
#include "settings/scripting/ScriptCommand.h"
#include "settings/scripting/ScriptOptions.h"
#include "settings/scripting/TreeQuery.h"

namespace settings {

// The content of a file of this machine.
struct ScriptFile {
  std::string bytes;
  std::string problem;  // for the user; empty if it was read
};

// What the steps of a script use: the application, the output, and how far the records have been
// read.
class ScriptContext {
 public:
  ScriptContext(Application& application, std::ostream& output, const ScriptOptions& options)
      : _application(application), _output(output), _options(options) {}

  Application& application() { return _application; }
  const ScriptOptions& options() const { return _options; }

  // Sets the current line and command, which results and messages contain.
  void beginLine(std::size_t number, std::string command);
  // Prints a result: as text, or as JSON with the option --json.
  void print(const nlohmann::json& result, const std::string& plain);
  void printFailure(const StepOutcome& outcome);

  // Performs a user action.
  StepOutcome act(const nlohmann::json& action);
  // Finds the row in the current tree and passes it to the work, which must not call the
  // application. If there is no such row, fails with a list of the rows.
  StepOutcome withRow(const RowAddress& address,
                      const std::function<StepOutcome(const TreeQuery&, const FoundNode&)>& work);
  // Scrolls to the row, as a user does, and passes its node's identity to the work.
  StepOutcome onRow(const RowAddress& address,
                    const std::function<StepOutcome(const std::string& row)>& work);

  // Reads a file relative to the script's folder, or at an absolute path.
  ScriptFile readFile(const std::string& path) const;

  // Where the next `log`, `writes` and `spawned` start.
  std::uint64_t logCursor = 0;
  std::uint64_t writesCursor = 0;
  std::size_t programCursor = 0;

 private:
  Application& _application;
  std::ostream& _output;
  const ScriptOptions& _options;
  std::size_t _line = 0;
  std::string _command;
};

// Converts the application's result.
StepOutcome outcomeOf(const ActionResult& result);

}  // namespace settings
