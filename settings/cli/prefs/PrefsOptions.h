#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/foundation/files/DeviceFileSystem.h"
#include "settings/cli/common/DeviceOptions.h"
#include "settings/cli/common/PreferenceFile.h"
#include "settings/device/Product.h"

namespace settings {

// The options of all `prefs` subcommands.
struct PrefsOptions {
  DeviceOptions device;
  std::string domain{productDomain};
};

// Adds --device and --domain.
void addPrefsOptions(CLI::App& command, PrefsOptions& options);

// The device's files. On failure returns nothing, prints a message and sets the context's status.
std::unique_ptr<platform::DeviceFileSystem> openDeviceFiles(const PrefsOptions& options,
                                                            CommandContext& context);

// The entries of the preference file. On failure returns nothing, prints a message and sets the
// context's status. A missing file has no entries: the store also starts empty then.
std::optional<platform::Dictionary> readEntries(const PrefsOptions& options,
                                                CommandContext& context);

}  // namespace settings
