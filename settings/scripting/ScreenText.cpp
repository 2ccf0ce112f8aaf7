#include "settings/scripting/ScreenText.h"

#include <nlohmann/json.hpp>

#include "settings/device/JsonText.h"
#include "settings/scripting/TreeQuery.h"

namespace settings {

using nlohmann::json;

namespace {

std::string valueText(const TreeQuery& query, const FoundNode& row) {
  const json value = query.shownValue(row);
  if (value.is_null()) return {};
  if (value.is_boolean()) return value.get<bool>() ? "on" : "off";
  return value.is_string() ? value.get<std::string>() : jsonText(value);
}

std::string rowText(const TreeQuery& query, const FoundNode& row) {
  const std::string title = TreeQuery::text(*row.node, "title");
  // A row that is out of sight has no cell to supply its text.
  std::string line = "  " + (title.empty() ? TreeQuery::rowName(*row.node) : title);
  const std::string value = valueText(query, row);
  if (!value.empty()) line += "  [" + value + "]";
  const FoundNode cell = query.firstOfKind(row, {"cell"});
  if (cell && TreeQuery::text(*cell.node, "accessory") == "disclosure") line += "  >";
  if (cell && !cell.node->value("enabled", true)) line += "  (disabled)";
  const std::string problem = TreeQuery::text(*row.node, "problem");
  if (!problem.empty()) line += "  (" + problem + ")";
  return line + "\n";
}

std::string sectionText(const TreeQuery& query, const FoundNode& section) {
  std::string text = "\n";
  const std::string header = TreeQuery::text(*section.node, "header");
  const std::string footer = TreeQuery::text(*section.node, "footer");
  if (!header.empty()) text += header + "\n";
  for (const FoundNode& row : query.children(section)) text += rowText(query, row);
  if (!footer.empty()) text += "    " + footer + "\n";
  return text;
}

std::string presentedText(const FoundNode& presented) {
  if (!presented) return {};
  const json& node = *presented.node;
  std::string text = "\n[" + TreeQuery::text(node, "kind") + "]";
  for (const char* member : {"title", "message", "name", "reason", "where"}) {
    const std::string part = TreeQuery::text(node, member);
    if (!part.empty()) text += " " + part;
  }
  if (node.contains("color")) text += " " + jsonText(node["color"]);
  if (node.value("busy", false)) text += " busy";
  text += "\n";
  for (const json& action : node.value("actions", json::array())) {
    text += "  " + TreeQuery::text(action, "title") + "\n";
  }
  for (const json& photo : node.value("photos", json::array())) {
    const std::string problem = TreeQuery::text(photo, "problem");
    text += "  " + TreeQuery::text(photo, "name") + (problem.empty() ? "" : "  (" + problem + ")") +
            "\n";
  }
  return text;
}

}  // namespace

std::string screenText(const TreeQuery& query) {
  const FoundNode page = query.page();
  std::string text;
  if (page) {
    text = TreeQuery::text(*page.node, "title") + "\n";
    if (page.node->contains("problem")) {
      const json& problem = (*page.node)["problem"];
      text += TreeQuery::text(problem, "title") + "\n" + TreeQuery::text(problem, "text") + "\n";
    }
  }
  for (const FoundNode& section : query.sections()) text += sectionText(query, section);
  return text + presentedText(query.presented());
}

std::string programText(const json& record) {
  std::string text = TreeQuery::text(record, "path");
  for (const json& argument : record["arguments"]) text += " " + jsonText(argument);
  text += " environment " +
          (record["environment"].is_null() ? "none" : jsonText(record["environment"]));
  if (record.contains("error")) return text + " not started: " + TreeQuery::text(record, "error");
  const json& exit = record["exit"];
  return text + (exit.is_null() ? " runs" : " exit " + jsonText(exit));
}

}  // namespace settings
