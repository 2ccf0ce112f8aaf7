#include "settings/cli/common/DeviceOptions.h"

#include <CLI/CLI.hpp>
#include <utility>

#include "settings/device/Product.h"
#include "settings/device/Traits.h"

namespace settings {
void addDeviceOption(CLI::App& command, DeviceOptions& options) {
  command.add_option("--device", options.folder, "Folder that acts as the device's \"/\"")
      ->envname(std::string(deviceVariable))
      ->capture_default_str()
      ->type_name("DIR");
}

void addTraitOptions(CLI::App& command, DeviceOptions& options) {
  for (const Trait& trait : traitTable()) {
    const auto take = [&options, name = trait.name](const std::string& value) {
      platform::DeviceTraits traits = traitsOf(options);
      if (const auto problem = changeTrait(traits, name, value)) {
        throw CLI::ValidationError(*problem);
      }
      options.traits.emplace_back(name, value);
    };
    command.add_option_function<std::string>(trait.option, take, trait.help)->group("Device");
  }
}

platform::DeviceTraits traitsOf(const DeviceOptions& options) {
  platform::DeviceTraits traits;
  for (const auto& [name, value] : options.traits) changeTrait(traits, name, value);
  return traits;
}

std::optional<DeviceTree> openDevice(const DeviceOptions& options, CommandContext& context) {
  DeviceTreeResult opened = DeviceTree::open(options.folder);
  if (!opened) {
    context.status = context.fail(opened.problem);
    return std::nullopt;
  }
  return std::move(opened.tree);
}

}  // namespace settings
