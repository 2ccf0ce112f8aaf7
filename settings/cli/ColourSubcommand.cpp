// Converts between colours and the texts that they are stored as. Asks the bundle's own colour
// cell.
#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

#include "platform/foundation/objects/Class.h"
#include "platform/uikit/drawing/UIColor.h"
#include "settings/cli/Subcommands.h"
#include "settings/cli/common/BundleProcess.h"
#include "settings/cli/common/DeviceOptions.h"
#include "settings/device/JsonText.h"
#include "settings/device/Product.h"
#include "settings/device/PropertyListJson.h"

namespace settings {
namespace {

using json = nlohmann::ordered_json;
using platform::Value;

struct ColourChoice {
  DeviceOptions device{{}, {}};  // no folder: uses the bundle that was built with the program
  std::string text;
  platform::ColorComponents components;
};

std::unique_ptr<BundleProcess> openBundle(const ColourChoice& choice, CommandContext& context) {
  std::string problem;
  std::unique_ptr<BundleProcess> opened;
  if (choice.device.folder.empty()) {
    opened = BundleProcess::openBuilt(problem);
  } else if (const auto tree = openDevice(choice.device, context)) {
    opened = BundleProcess::openInstalled(*tree, problem);
  }
  if (!problem.empty()) context.status = context.fail(problem);
  return opened;
}

// The cell's answer to an operation. If there is no such cell, returns no value and prints a
// message.
Value askCell(BundleProcess& bundle, std::string_view selector, const Value& argument,
              CommandContext& context) {
  const platform::Class* found = bundle.find(colourCellClassName);
  const auto cell = found ? found->makeInstance() : nullptr;
  if (cell && cell->respondsToSelector(selector)) return cell->perform(selector, {argument});
  context.status = context.fail("the bundle has no " + std::string(colourCellClassName) +
                                " that responds to " + std::string(selector));
  return {};
}

json jsonOf(const platform::UIColor& color) {
  if (color.systemName()) return {{"system", *color.systemName()}};
  const platform::ColorComponents components = color.components();
  return {{"red", components.red},
          {"green", components.green},
          {"blue", components.blue},
          {"alpha", components.alpha}};
}

void printColor(const platform::UIColor& color, CommandContext& context) {
  const json members = jsonOf(color);
  if (context.json) {
    context.output << jsonText(members) << '\n';
    return;
  }
  for (const auto& [name, value] : members.items()) {
    const std::string text = value.is_string() ? value.get<std::string>() : jsonText(value);
    context.output << name << ": " << text << '\n';
  }
}

ExitStatus parseColour(const ColourChoice& choice, CommandContext& context) {
  const auto bundle = openBundle(choice, context);
  if (!bundle) return context.status;
  const auto color =
      askCell(*bundle, "colorWithHexString:", choice.text, context).as<platform::UIColor>();
  if (!color) return ExitStatus::finding;
  printColor(*color, context);
  return ExitStatus::done;
}

ExitStatus formatColour(const ColourChoice& choice, CommandContext& context) {
  const auto bundle = openBundle(choice, context);
  if (!bundle) return context.status;
  const auto color = std::make_shared<platform::UIColor>(choice.components);
  const Value text = askCell(*bundle, "hexStringFromColor:", color, context);
  if (!text.isString()) return ExitStatus::finding;
  context.output << (context.json ? jsonText(jsonFromValue(text), JsonStyle::indented)
                                  : *text.text())
                 << '\n';
  return ExitStatus::done;
}

void addBundleOption(CLI::App& command, ColourChoice& choice) {
  command
      .add_option("--device", choice.device.folder,
                  "Ask the bundle of this device; default: the program's own")
      ->type_name("DIR");
}

void addColourParse(CLI::App& colour, CommandContext& context) {
  CLI::App* command = colour.add_subcommand("parse", "Print the colour that a text stands for");
  const auto choice = std::make_shared<ColourChoice>();
  command->add_option("STRING", choice->text, "As it is stored: FA0000FF, #f00, red")->required();
  addBundleOption(*command, *choice);
  addCommonOptions(*command, context, "colour parse FA0000FF --json");
  command->callback([choice, &context] { context.status = parseColour(*choice, context); });
}

void addColourFormat(CLI::App& colour, CommandContext& context) {
  CLI::App* command = colour.add_subcommand("format", "Print the text that a colour is stored as");
  const auto choice = std::make_shared<ColourChoice>();
  platform::ColorComponents& components = choice->components;
  command->add_option("R", components.red, "Red, from 0 to 1")->required()->check(CLI::Number);
  command->add_option("G", components.green, "Green")->required()->check(CLI::Number);
  command->add_option("B", components.blue, "Blue")->required()->check(CLI::Number);
  command->add_option("A", components.alpha, "Alpha")->required()->check(CLI::Number);
  addBundleOption(*command, *choice);
  addCommonOptions(*command, context, "colour format 1 0 0 0.5");
  command->callback([choice, &context] { context.status = formatColour(*choice, context); });
}

}  // namespace

void addColour(CLI::App& program, CommandContext& context) {
  CLI::App* colour = program.add_subcommand("colour", "Colours as they are stored: parse, format");
  colour->require_subcommand(1);
  colour->footer(exampleText("colour parse '#FA0000'"));
  addColourParse(*colour, context);
  addColourFormat(*colour, context);
}

}  // namespace settings
