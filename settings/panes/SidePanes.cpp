#include "settings/panes/SidePanes.h"

#include <algorithm>
#include <cstring>
#include <nlohmann/json.hpp>

#include "platform/foundation/values/Exception.h"
#include "platform/preferences/PSListController.h"
#include "platform/preferences/PSSpecifier.h"
#include "platform/uikit/images/UIImage.h"
#include "platform/uikit/images/UIImageRepresentation.h"
#include "platform/uikit/tables/UITableView.h"
#include "settings/panes/FilePane.h"

namespace settings {

using nlohmann::json;

json logJson(const std::vector<platform::LogEntry>& entries) {
  json result = json::array();
  for (const platform::LogEntry& entry : entries) {
    const bool unified = entry.source == platform::LogSource::unified;
    result.push_back({{"time", entry.time},
                      {"source", unified ? "unified" : "nslog"},
                      {"message", entry.message}});
  }
  return result;
}

json programsJson(const std::vector<platform::ProgramRecord>& records) {
  json result = json::array();
  for (const platform::ProgramRecord& record : records) {
    const auto& request = record.request;
    json entry{{"path", request.path},
               {"arguments", request.arguments},
               {"environment", request.environment ? json(*request.environment) : json()},
               {"exit", record.exitStatus ? json(*record.exitStatus) : json()}};
    if (record.startError) entry["error"] = std::strerror(record.startError);
    result.push_back(std::move(entry));
  }
  return result;
}

namespace {

json valueOf(platform::PSSpecifier& specifier) {
  try {
    return glanceOfValue(specifier.performGetter());
  } catch (const platform::Exception& exception) {
    return std::string("raises ") + exception.what();
  }
}

json optionalJson(const std::optional<std::string>& text) {
  return text ? json(*text) : json();
}

}  // namespace

json specifierJson(const std::string& node, platform::PSSpecifier& specifier) {
  json result{{"node", node},
              {"identifier", optionalJson(specifier.identifier())},
              {"name", optionalJson(specifier.name())},
              {"cellType", platform::nameOfCellType(specifier.cellType())},
              {"getter", optionalJson(specifier.getter())},
              {"setter", optionalJson(specifier.setter())},
              {"action", optionalJson(specifier.buttonAction())},
              {"detail", optionalJson(specifier.detailControllerClass())},
              {"value", valueOf(specifier)},
              {"properties", json::object()}};
  for (const auto& entry : specifier.properties()->snapshot()) {
    result["properties"][std::string(entry.key)] = glanceOfValue(entry.value);
  }
  if (const auto problem = specifier.problem()) result["problem"] = *problem;
  return result;
}

std::shared_ptr<platform::PSSpecifier> specifierOfRow(const NodeTarget& row) {
  const auto table = row.as<platform::UITableView>();
  if (!table) return nullptr;
  const auto page = std::dynamic_pointer_cast<platform::PSListController>(table->dataSource());
  const auto path = table->indexPathForRowToken(row.token);
  return page && path ? page->specifierAtIndexPath(*path) : nullptr;
}

std::optional<std::string> encodedImage(const std::shared_ptr<platform::UIImage>& image) {
  const auto file =
      image->encodedData() ? *image->encodedData() : platform::UIImagePNGRepresentation(image);
  if (!file) return std::nullopt;
  const auto bytes = file->bytes();
  return std::string(bytes.begin(), bytes.end());
}

bool restartsHomeScreen(const platform::ProgramRequest& request) {
  const std::string name = request.path.substr(request.path.rfind('/') + 1);
  return name == "sbreload" ||
         (name == "killall" &&
          std::ranges::find(request.arguments, "SpringBoard") != request.arguments.end());
}

}  // namespace settings
