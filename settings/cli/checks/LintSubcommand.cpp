#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

#include "settings/cli/checks/BundleLint.h"
#include "settings/cli/checks/CheckSubcommands.h"
#include "settings/cli/common/PlistInput.h"
#include "settings/device/BundleInstallation.h"
#include "settings/device/DeviceTree.h"
#include "settings/device/JsonText.h"
#include "settings/device/Product.h"

namespace settings {
namespace {

void printLint(const std::vector<LintFinding>& findings, CommandContext& context) {
  if (context.json) {
    nlohmann::ordered_json all = nlohmann::ordered_json::array();
    for (const LintFinding& each : findings) {
      all.push_back({{"file", each.file}, {"row", each.row}, {"what", each.what}});
    }
    context.output << jsonText(all, JsonStyle::indented) << '\n';
    return;
  }
  for (const LintFinding& each : findings) {
    context.output << each.file << (each.row.empty() ? "" : ", " + each.row) << ": " << each.what
                   << '\n';
  }
}

ExitStatus lintResources(const std::string& given, CommandContext& context) {
  const std::filesystem::path bundle =
      given.empty() ? findBuiltBundle() : std::filesystem::path(given);
  std::error_code error;
  const auto folder = std::filesystem::canonical(bundle, error);
  if (error || !std::filesystem::is_directory(folder)) {
    return context.fail(bundle.string() + " is not the folder of a bundle");
  }
  const auto findings = lintBundle(folder);
  printLint(findings, context);
  return findings.empty() ? ExitStatus::done : ExitStatus::finding;
}

}  // namespace

void addLint(CLI::App& program, CommandContext& context) {
  CLI::App* command =
      program.add_subcommand("lint", "Check the resources of a bundle; one line for each finding");
  const auto bundle = std::make_shared<std::string>();
  command->add_option("BUNDLE", *bundle, "The bundle's folder; default: the program's own");
  addCommonOptions(*command, context, "lint build/release/" + std::string(bundleFolderName));
  command->callback([bundle, &context] { context.status = lintResources(*bundle, context); });
}

}  // namespace settings
