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

// The options that name a device and say what it is like.
struct DeviceOptions {
  std::string folder = "./device";
  std::vector<std::pair<std::string, std::string>> traits;  // name and value, in their order
};

// Adds --device DIR, whose default is the environment's (deviceVariable), else "./device".
void addDeviceOption(CLI::App& command, DeviceOptions& options);
// Adds the options of the device's traits (Traits.h). A value that is no such trait is a usage
// error that says what is allowed.
void addTraitOptions(CLI::App& command, DeviceOptions& options);

// The traits of a standard phone with those that were given. They have been checked before.
platform::DeviceTraits traitsOf(const DeviceOptions& options);

// The device tree, or nothing with a message and the context's status set.
std::optional<DeviceTree> openDevice(const DeviceOptions& options, CommandContext& context);

}  // namespace settings
