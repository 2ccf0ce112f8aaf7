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

// A file of this machine.
struct ScriptFile {
  std::string bytes;
  std::string problem;  // for people; empty where it was read
};

// What the steps of a script work on: the application, where results go, and how far the records
// have been read.
class ScriptContext {
 public:
  ScriptContext(Application& application, std::ostream& output, const ScriptOptions& options)
      : _application(application), _output(output), _options(options) {}

  Application& application() { return _application; }
  const ScriptOptions& options() const { return _options; }

  // The line and the command that run now; results and messages bear them.
  void beginLine(std::size_t number, std::string command);
  // A result: text for people, JSON with the option for it.
  void print(const nlohmann::json& result, const std::string& plain);
  void printFailure(const StepOutcome& outcome);

  // Does what the action says, with the user's hand.
  StepOutcome act(const nlohmann::json& action);
  // Finds the row in what is shown now and hands it to the work, which must not call the
  // application; fails, with the names of the rows, where there is none.
  StepOutcome withRow(const RowAddress& address,
                      const std::function<StepOutcome(const TreeQuery&, const FoundNode&)>& work);
  // Scrolls to the row, as a hand does, and hands its node's identity to the work.
  StepOutcome onRow(const RowAddress& address,
                    const std::function<StepOutcome(const std::string& row)>& work);

  // A file beside the script, or at an absolute path.
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

// The outcome of what the application was asked for.
StepOutcome outcomeOf(const ActionResult& result);

}  // namespace settings
