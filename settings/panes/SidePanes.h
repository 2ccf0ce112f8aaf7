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

// A pane beside the phone that is sent as a whole, each time that it has changed.
struct SidePane {
  enum class Source { memory, files };

  std::string name;  // of its member of docs/tree.md's "side" message
  Source source;     // of files: asked for only where the device's files may have changed
  std::function<nlohmann::json()> content;
};

// Members of docs/tree.md's "side" message.
nlohmann::json logJson(const std::vector<platform::LogEntry>& entries);
nlohmann::json programsJson(const std::vector<platform::ProgramRecord>& records);
// Asks the specifier's getter for its value; one that raises gives a text in its place.
nlohmann::json specifierJson(const std::string& node, platform::PSSpecifier& specifier);

// The specifier behind a row of a list page; empty where there is none.
std::shared_ptr<platform::PSSpecifier> specifierOfRow(const NodeTarget& row);

// The image as a file: as it came, or a PNG of its pixels. Nothing for a symbol.
std::optional<std::string> encodedImage(const std::shared_ptr<platform::UIImage>& image);

// Whether the program is one that restarts the home screen.
bool restartsHomeScreen(const platform::ProgramRequest& request);

}  // namespace settings
