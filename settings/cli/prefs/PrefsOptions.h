#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/foundation/files/DeviceFileSystem.h"
#include "settings/cli/common/DeviceOptions.h"
#include "settings/cli/common/PreferenceFile.h"
#include "settings/device/Product.h"

namespace settings {

// What every `prefs` subcommand takes.
struct PrefsOptions {
  DeviceOptions device;
  std::string domain{productDomain};
};

// Adds --device and --domain.
void addPrefsOptions(CLI::App& command, PrefsOptions& options);

// The device's files, or nothing with a message and the context's status set.
std::unique_ptr<platform::DeviceFileSystem> openDeviceFiles(const PrefsOptions& options,
                                                            CommandContext& context);

// The entries of the preference file, or nothing with a message and the context's status set. A
// file that is missing has no entries: the store starts empty then, too.
std::optional<platform::Dictionary> readEntries(const PrefsOptions& options,
                                                CommandContext& context);

}  // namespace settings
