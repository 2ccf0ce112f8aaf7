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
  failed = 1,   // an expectation failed, what a line does was refused, or an exception of the
                // platform was not expected
  badLine = 2,  // a line that cannot be understood; nothing was played
};

// What `script --help` tells of a command.
struct ScriptCommandHelp {
  std::string usage;
  std::string text;
};

// Plays a script, the user's hand with one command a line, on an application with a virtual clock.
// Results go to `output`, messages (line number, what is wrong, what is allowed) to `messages`.
// The whole script is parsed before its first line is played, so that a bad line changes nothing.
class ScriptRunner {
 public:
  ScriptRunner(Application& application, std::ostream& output, std::ostream& messages,
               ScriptOptions options);

  ScriptStatus run(std::istream& script);

  // Every command, in the order in which help shows them.
  static std::vector<ScriptCommandHelp> help();

 private:
  Application& _application;
  std::ostream& _output;
  std::ostream& _messages;
  ScriptOptions _options;
};

}  // namespace settings
