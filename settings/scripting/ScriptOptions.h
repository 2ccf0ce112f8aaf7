#pragma once

#include <string>

namespace settings {

// How a script is played.
struct ScriptOptions {
  std::string name = "script";  // of the script, for messages: a file's name or "standard input"
  std::string folder = ".";     // where `put PATH @FILE` finds its files, on this machine
  bool json = false;            // results as one JSON object a line
};

}  // namespace settings
