#pragma once

#include <functional>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/log/Log.h"
#include "platform/foundation/programs/Programs.h"
#include "settings/tree/NodeTarget.h"

namespace platform {
class PSSpecifier;
}

namespace settings {

// A pane beside the phone, which is sent as a whole each time it has changed.
struct SidePane {
  enum class Source { memory, files };

  std::string name;  // of its member in the "side" message of docs/tree.md
  Source source;     // files: read only if the device's files may have changed
  std::function<nlohmann::json()> content;
};

// Members of the "side" message in docs/tree.md.
nlohmann::json logJson(const std::vector<platform::LogEntry>& entries);
nlohmann::json programsJson(const std::vector<platform::ProgramRecord>& records);
// Calls the specifier's getter. If it raises, the value is a text that says so.
nlohmann::json specifierJson(const std::string& node, platform::PSSpecifier& specifier);

// The specifier of a row of a list page; empty if there is none.
std::shared_ptr<platform::PSSpecifier> specifierOfRow(const NodeTarget& row);

// The image as a file: its original bytes, or a PNG of its pixels. Empty for a symbol.
std::optional<std::string> encodedImage(const std::shared_ptr<platform::UIImage>& image);

// Returns whether the program restarts the home screen.
bool restartsHomeScreen(const platform::ProgramRequest& request);

}  // namespace settings
