#include "settings/cli/common/DeviceOptions.h"

#include <CLI/CLI.hpp>
#include <array>
#include <utility>

#include "settings/device/Traits.h"

namespace settings {
namespace {

struct TraitOption {
  const char* option;
  const char* trait;  // as the script command `trait` names it
  const char* help;
};

constexpr std::array<TraitOption, 6> traitOptions = {{
    {"--idiom", "idiom", "phone or pad"},
    {"--system", "system", "System version, as 15.4"},
    {"--screen", "screen", "Points and scale, as 390x844@3"},
    {"--appearance", "appearance", "light or dark"},
    {"--text-scale", "text", "Text size, 1 is the standard one"},
    {"--tint", "tint", "Tint colour, as 007AFFFF"},
}};

}  // namespace

void addDeviceOption(CLI::App& command, DeviceOptions& options) {
  command.add_option("--device", options.folder, "Folder that stands for the device's \"/\"")
      ->envname("ZENTROVA_DEVICE")
      ->capture_default_str()
      ->type_name("DIR");
}

void addTraitOptions(CLI::App& command, DeviceOptions& options) {
  for (const TraitOption& option : traitOptions) {
    const auto take = [&options, name = std::string(option.trait)](const std::string& value) {
      platform::DeviceTraits traits = traitsOf(options);
      if (const auto problem = changeTrait(traits, name, value)) {
        throw CLI::ValidationError(*problem);
      }
      options.traits.emplace_back(name, value);
    };
    command.add_option_function<std::string>(option.option, take, option.help)->group("Device");
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
