#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "platform/foundation/propertylist/PropertyListBinary.h"
#include "settings/cli/common/HostFile.h"
#include "settings/cli/common/PlistInput.h"
#include "settings/cli/plist/PlistSubcommands.h"
#include "settings/device/JsonText.h"
#include "settings/device/PropertyListJson.h"

namespace settings {
namespace {

struct ConvertOptions {
  std::string form;
  std::string input;
  std::string output = "-";
};

platform::PropertyListText converted(const platform::Value& value, const std::string& form) {
  if (form == "xml1") return platform::writeXmlPropertyList(value);
  if (form == "binary1") return platform::writeBinaryPropertyList(value);
  return {jsonText(jsonFromValue(value), JsonStyle::indented) + "\n", std::nullopt};
}

ExitStatus convert(const ConvertOptions& options, CommandContext& context) {
  const auto value = readPlistFile(options.input, context);
  if (!value) return context.status;
  const platform::PropertyListText text = converted(*value, options.form);
  if (text.error) return context.fail(shownName(options.input) + ": " + *text.error);
  const auto problem = writeHostFile(options.output, text.bytes, context.output);
  if (problem) return context.fail(*problem);
  // Standard output then contains the converted list and nothing else.
  if (context.json && options.output != "-") {
    const nlohmann::ordered_json report = {
        {"file", options.output}, {"form", options.form}, {"bytes", text.bytes.size()}};
    context.output << jsonText(report) << '\n';
  }
  return ExitStatus::done;
}

}  // namespace

void addPlistConvert(CLI::App& plist, CommandContext& context) {
  CLI::App* command = plist.add_subcommand("convert", "Convert a property list to another form");
  const auto options = std::make_shared<ConvertOptions>();
  command->add_option("FORM", options->form, "xml1, binary1 or json")
      ->required()
      ->check(CLI::IsMember({"xml1", "binary1", "json"}));
  command
      ->add_option("FILE", options->input, "The file, in any of these forms; - is standard input")
      ->required();
  command->add_option("-o,--output", options->output, "The output file; - is standard output")
      ->capture_default_str()
      ->type_name("OUT");
  addCommonOptions(*command, context, "plist convert xml1 in.plist -o out.plist");
  command->callback([options, &context] { context.status = convert(*options, context); });
}

}  // namespace settings
