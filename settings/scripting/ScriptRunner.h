#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "settings/application/Application.h"
#include "settings/scripting/ScriptOptions.h"

namespace settings {

// The exit status of a script.
enum class ScriptStatus : int {
  done = 0,
  failed = 1,   // an expectation failed, an action was refused, or there was an unexpected
                // exception
  badLine = 2,  // a line is invalid; nothing was played
};

// The help of a command, as shown by `script --help`.
struct ScriptCommandHelp {
  std::string usage;
  std::string text;
};

// Plays a script of user actions, one command per line, on an application with a virtual clock.
// Results go to `output`; messages (line number, what is wrong, what is expected) go to `messages`.
// The whole script is parsed before the first line is played, so an invalid line changes nothing.
class ScriptRunner {
 public:
  ScriptRunner(Application& application, std::ostream& output, std::ostream& messages,
               ScriptOptions options);

  ScriptStatus run(std::istream& script);

  // All commands, in the order of the help.
  static std::vector<ScriptCommandHelp> help();

 private:
  Application& _application;
  std::ostream& _output;
  std::ostream& _messages;
  ScriptOptions _options;
};

}  // namespace settings
