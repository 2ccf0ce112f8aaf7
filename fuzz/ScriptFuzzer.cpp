// Plays any bytes as a script, on a device without a bundle. A script with an invalid line is
// refused as a whole, with the line and what is allowed; a valid one is played to its end.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>

#include "fuzz/FuzzChecks.h"
#include "fuzz/TemporaryTree.h"
#include "settings/application/Application.h"
#include "settings/scripting/ScriptRunner.h"

namespace {

using fuzzing::require;

void play(const fuzzing::TemporaryTree& tree, const std::string& script) {
  settings::ApplicationOptions options;
  options.deviceRoot = tree.root();
  const auto made = settings::Application::create(options);
  require(made.application != nullptr, "no application: " + made.error);
  std::istringstream lines(script);
  std::ostringstream output;
  std::ostringstream messages;
  settings::ScriptOptions how;
  how.folder = tree.root();
  settings::ScriptRunner runner(*made.application, output, messages, how);
  const auto status = runner.run(lines);
  require(status == settings::ScriptStatus::done || !messages.str().empty(),
          "a script that failed without a message");
  require(status != settings::ScriptStatus::badLine || output.str().empty(),
          "a script with a bad line was played");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzzing::TemporaryTree tree;
  play(tree, std::string(reinterpret_cast<const char*>(data), size));
  tree.clear();
  return 0;
}
