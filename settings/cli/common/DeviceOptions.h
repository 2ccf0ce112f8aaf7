#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/objects/DeviceTraits.h"
#include "settings/cli/common/CommandContext.h"
#include "settings/device/DeviceTree.h"

namespace settings {

// The options that select a device and its traits.
struct DeviceOptions {
  std::string folder = "./device";
  std::vector<std::pair<std::string, std::string>> traits;  // name and value, in the order given
};

// Adds --device DIR. Its default is the environment variable deviceVariable, else "./device".
void addDeviceOption(CLI::App& command, DeviceOptions& options);
// Adds the options for the device's traits (Traits.h). An invalid value is a usage error that says
// what is expected.
void addTraitOptions(CLI::App& command, DeviceOptions& options);

// The traits of a standard phone, changed by the options, which are valid already.
platform::DeviceTraits traitsOf(const DeviceOptions& options);

// Opens the device tree. On failure returns nothing, prints a message and sets the context's
// status.
std::optional<DeviceTree> openDevice(const DeviceOptions& options, CommandContext& context);

}  // namespace settings
