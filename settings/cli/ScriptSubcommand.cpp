#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <memory>
#include <sstream>
#include <string>

#include "settings/cli/Subcommands.h"
#include "settings/cli/common/DeviceOptions.h"
#include "settings/cli/common/HostFile.h"
#include "settings/scripting/ScriptRunner.h"

namespace settings {
namespace {

struct ScriptChoice {
  DeviceOptions device;
  std::string file;
};

ScriptOptions optionsOf(const ScriptChoice& choice, const CommandContext& context) {
  ScriptOptions options;
  options.name = shownName(choice.file);
  const std::string folder = std::filesystem::path(choice.file).parent_path().string();
  if (!folder.empty()) options.folder = folder;
  options.json = context.json;
  return options;
}

ExitStatus play(const ScriptChoice& choice, CommandContext& context) {
  const auto tree = openDevice(choice.device, context);
  if (!tree) return context.status;
  std::string problem;
  const auto text = readHostFile(choice.file, context.input, problem);
  if (!text) return context.fail(shownName(choice.file) + ": " + problem);
  ApplicationOptions options;
  options.deviceRoot = tree->root().string();
  options.traits = traitsOf(choice.device);
  ApplicationResult made = Application::create(options);
  if (!made.application) return context.fail(made.error);
  std::istringstream script(*text);
  ScriptRunner runner(*made.application, context.output, context.messages,
                      optionsOf(choice, context));
  return static_cast<ExitStatus>(runner.run(script));
}

std::string commandsText() {
  std::ostringstream text;
  text << "Commands of a script, one per line. Empty lines and lines that start with \"# \" are "
          "ignored.\nA row is #identifier, #identifier~2 (the second with that name), \"label\" or "
          "SECTION ROW:\n";
  for (const ScriptCommandHelp& command : ScriptRunner::help()) {
    text << "  " << command.usage << "\n      " << command.text << '\n';
  }
  return text.str();
}

}  // namespace

void addScript(CLI::App& program, CommandContext& context) {
  CLI::App* command =
      program.add_subcommand("script", "Play a script of user actions, one command per line");
  const auto choice = std::make_shared<ScriptChoice>();
  command->add_option("FILE", choice->file, "The script; - is standard input")->required();
  addDeviceOption(*command, choice->device);
  addTraitOptions(*command, choice->device);
  addCommonOptions(*command, context, {});
  command->footer(exampleText("script -\n\n" + commandsText(),
                              "printf 'open\\ntap \"Respring\"\\nspawned\\n' | "));
  command->callback([choice, &context] { context.status = play(*choice, context); });
}

}  // namespace settings
