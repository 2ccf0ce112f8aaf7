#pragma once

#include <string>

namespace settings {

// Options for playing a script.
struct ScriptOptions {
  std::string name = "script";  // shown in messages: a file's name or "standard input"
  std::string folder = ".";     // folder of this machine for `put PATH @FILE`
  bool json = false;            // print each result as one JSON object per line
};

}  // namespace settings
