#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "settings/cli/common/HostFile.h"
#include "settings/cli/common/PlistInput.h"
#include "settings/cli/plist/PlistSubcommands.h"
#include "settings/device/JsonText.h"

namespace settings {
namespace {

using json = nlohmann::ordered_json;

// Returns the error in a file; nothing if it is a property list.
std::optional<platform::PropertyListError> lintFile(const std::string& name,
                                                    CommandContext& context) {
  std::string problem;
  const auto bytes = readHostFile(name, context.input, problem);
  if (bytes) return platform::readPropertyList(*bytes).error;
  platform::PropertyListError unreadable;
  unreadable.reason = problem;
  unreadable.accepted = "a file that can be read, of at most " +
                        std::to_string(platform::PropertyListLimits{}.bytes) + " bytes";
  return unreadable;
}

json report(const std::string& name, const std::optional<platform::PropertyListError>& error) {
  json file = {{"file", name}, {"ok", !error}};
  if (!error) return file;
  file["reason"] = error->reason;
  if (error->line) file["line"] = *error->line;
  if (error->column) file["column"] = *error->column;
  if (error->offset) file["offset"] = *error->offset;
  if (!error->accepted.empty()) file["accepted"] = error->accepted;
  return file;
}

ExitStatus lint(const std::vector<std::string>& files, CommandContext& context) {
  ExitStatus status = ExitStatus::done;
  json reports = json::array();
  for (const std::string& file : files) {
    const auto error = lintFile(file, context);
    if (error) status = ExitStatus::finding;
    if (context.json) {
      reports.push_back(report(shownName(file), error));
    } else if (error) {
      context.output << refusalLine(shownName(file), *error) << '\n';
    }
  }
  if (context.json) context.output << jsonText(reports, JsonStyle::indented) << '\n';
  return status;
}

}  // namespace

void addPlistLint(CLI::App& plist, CommandContext& context) {
  const platform::PropertyListLimits limits;
  CLI::App* command = plist.add_subcommand(
      "lint", "Check property lists; one line for each that is refused. At most " +
                  std::to_string(limits.bytes) + " bytes, " + std::to_string(limits.depth) +
                  " levels and " + std::to_string(limits.objects) + " values are read");
  const auto files = std::make_shared<std::vector<std::string>>();
  command->add_option("FILE", *files, "XML or binary property lists; - is standard input")
      ->required();
  addCommonOptions(*command, context, "plist lint resources/*.plist");
  command->callback([files, &context] { context.status = lint(*files, context); });
}

}  // namespace settings
