#include <CLI/CLI.hpp>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

#include "settings/cli/Subcommands.h"
#include "settings/cli/common/DeviceOptions.h"
#include "settings/device/JsonText.h"

namespace settings {
namespace {

using json = nlohmann::ordered_json;

struct DeviceChoice {
  DeviceOptions device;
  std::string folder;  // given without the option --device
  std::string bundle;
  bool bundleOnly = false;
};

json jsonOf(const DeviceDescription& description) {
  return {{"folder", description.folder},
          {"format", description.format},
          {"jailbreakFolder", description.jailbreakFolder},
          {"bundlePath", description.bundlePath},
          {"bundleVersion", description.bundleVersion},
          {"preferenceFiles", description.preferenceFiles},
          {"modules", description.modules},
          {"photos", description.photos},
          {"programs", description.programs}};
}

void printList(std::ostream& output, const char* title, const std::vector<std::string>& names) {
  output << title << ": " << names.size() << '\n';
  for (const std::string& name : names) output << "  " << name << '\n';
}

void print(const DeviceDescription& description, CommandContext& context) {
  std::ostream& output = context.output;
  if (context.json) {
    output << jsonText(jsonOf(description), JsonStyle::indented) << '\n';
    return;
  }
  output << "folder: " << description.folder << '\n'
         << "/var/jb: " << description.jailbreakFolder << '\n'
         << "bundle: "
         << (description.bundlePath.empty() ? "not installed" : description.bundlePath) << '\n'
         << "bundle version: " << description.bundleVersion << '\n';
  printList(output, "preference files", description.preferenceFiles);
  printList(output, "modules", description.modules);
  printList(output, "photos", description.photos);
  printList(output, "programs", description.programs);
}

// Prints what was done, in one line.
ExitStatus report(const DeviceTree& tree, const char* done, CommandContext& context) {
  if (context.json) {
    const json result = {{"folder", tree.root().string()}, {"done", done}};
    context.output << jsonText(result) << '\n';
  } else {
    context.output << done << ' ' << tree.root().string() << '\n';
  }
  return ExitStatus::done;
}

ExitStatus create(const DeviceChoice& choice, CommandContext& context) {
  const DeviceTreeResult made = DeviceTree::create(choice.device.folder, {choice.bundle});
  return made ? report(*made.tree, "created", context) : context.fail(made.problem);
}

ExitStatus describe(const DeviceChoice& choice, CommandContext& context) {
  const auto tree = openDevice(choice.device, context);
  if (!tree) return context.status;
  print(tree->describe(), context);
  return ExitStatus::done;
}

ExitStatus reset(const DeviceChoice& choice, CommandContext& context) {
  const auto tree = openDevice(choice.device, context);
  if (!tree) return context.status;
  const DeviceTreeOptions options{choice.bundle};
  const auto problem = choice.bundleOnly ? tree->installBundle(options) : tree->reset(options);
  if (problem) return context.fail(*problem);
  return report(*tree, choice.bundleOnly ? "installed the bundle in" : "reset", context);
}

using Action = ExitStatus (*)(const DeviceChoice&, CommandContext&);

CLI::App& add(CLI::App& device, CommandContext& context, const char* name, const char* help,
              Action action, const std::shared_ptr<DeviceChoice>& choice) {
  CLI::App* command = device.add_subcommand(name, help);
  addDeviceOption(*command, choice->device);
  addCommonOptions(*command, context, std::string("device ") + name + " ./device");
  command->callback([choice, action, &context] {
    // A separate variable: in the option's variable, the environment's default would replace it.
    if (!choice->folder.empty()) choice->device.folder = choice->folder;
    context.status = action(*choice, context);
  });
  return *command;
}

void addFolder(CLI::App& command, DeviceChoice& choice) {
  command.add_option("DIR", choice.folder, "The folder; overrides --device");
}

void addBundle(CLI::App& command, DeviceChoice& choice) {
  command.add_option("--bundle", choice.bundle, "The built bundle; default: the program's own")
      ->type_name("DIR");
}

}  // namespace

void addDevice(CLI::App& program, CommandContext& context) {
  CLI::App* device = program.add_subcommand("device", "Device trees: create, describe, reset");
  device->require_subcommand(1);
  device->footer(exampleText("device create ./device"));
  const auto choice = std::make_shared<DeviceChoice>();
  CLI::App& creating =
      add(*device, context, "create", "Create a folder that acts as a device", create, choice);
  CLI::App& describing =
      add(*device, context, "describe", "Print what a device tree holds", describe, choice);
  CLI::App& resetting =
      add(*device, context, "reset", "Restore a device tree to its initial content", reset, choice);
  for (CLI::App* command : {&creating, &describing, &resetting}) addFolder(*command, *choice);
  addBundle(creating, *choice);
  addBundle(resetting, *choice);
  resetting.add_flag("--bundle-only", choice->bundleOnly, "Only reinstall the bundle");
}

}  // namespace settings
