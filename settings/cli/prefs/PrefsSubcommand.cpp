#include <CLI/CLI.hpp>
#include <string>

#include "settings/cli/prefs/PrefsOptions.h"
#include "settings/cli/prefs/PrefsSubcommands.h"

namespace settings {
namespace {

std::string checkDomain(const std::string& domain) {
  const bool isName = !domain.empty() && domain.find('/') == std::string::npos &&
                      domain.find('\0') == std::string::npos;
  return isName ? std::string() : "a domain is a name without \"/\", such as com.example.prefs";
}

}  // namespace

void addPrefsOptions(CLI::App& command, PrefsOptions& options) {
  addDeviceOption(command, options.device);
  command.add_option("--domain", options.domain, "The preferences domain")
      ->capture_default_str()
      ->check(checkDomain)
      ->type_name("NAME");
}

std::unique_ptr<platform::DeviceFileSystem> openDeviceFiles(const PrefsOptions& options,
                                                            CommandContext& context) {
  const auto tree = openDevice(options.device, context);
  return tree ? std::make_unique<platform::DeviceFileSystem>(tree->root().string()) : nullptr;
}

std::optional<platform::Dictionary> readEntries(const PrefsOptions& options,
                                                CommandContext& context) {
  const auto files = openDeviceFiles(options, context);
  if (!files) return std::nullopt;
  PreferenceFile file = readPreferenceFile(*files, preferenceFilePath(options.domain));
  if (file.state == PreferenceFileState::damaged) {
    context.status = context.fail(file.problem);
    return std::nullopt;
  }
  return std::move(file.entries);
}

void addPrefs(CLI::App& program, CommandContext& context) {
  CLI::App* prefs = program.add_subcommand("prefs", "The preference file: read, change, watch");
  prefs->require_subcommand(1);
  prefs->footer(exampleText("prefs set presentationStyle 1"));
  for (AddSubcommand* add : prefsSubcommands) add(*prefs, context);
}

}  // namespace settings
