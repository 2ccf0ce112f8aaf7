#include <nlohmann/json.hpp>

#include "platform/foundation/propertylist/PropertyList.h"
#include "settings/device/JsonText.h"
#include "settings/scripting/ScreenText.h"
#include "settings/scripting/ScriptCommand.h"
#include "settings/scripting/ScriptContext.h"
#include "settings/scripting/ScriptValues.h"

namespace settings {
namespace {

using nlohmann::json;

// Returns `nothing` if there are no lines.
std::string linesOf(const std::vector<std::string>& lines, const char* nothing = "") {
  std::string text = lines.empty() ? nothing : "";
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

Step parseReportOfSpawned(LineReader&) {
  return [](ScriptContext& context) {
    context.application().waitForPrograms();
    const json all = context.application().programs();
    json fresh = json::array();
    std::vector<std::string> lines;
    for (; context.programCursor < all.size(); ++context.programCursor) {
      fresh.push_back(all[context.programCursor]);
      lines.push_back(programText(fresh.back()));
    }
    context.print(fresh, linesOf(lines, "nothing was started"));
    return StepOutcome{};
  };
}

std::string outcomeText(const platform::FileWrite& write) {
  if (write.error) return ": " + write.error.message;
  return write.changed ? ", changed" : ", the same bytes";
}

Step parseWrites(LineReader&) {
  return [](ScriptContext& context) {
    json fresh = json::array();
    std::vector<std::string> lines;
    for (const auto& write : context.application().writesSince(context.writesCursor)) {
      const std::string writer = context.application().bundleName();
      fresh.push_back({{"path", write.path},
                       {"writer", writer},
                       {"changed", write.changed},
                       {"size", write.size}});
      if (write.error) fresh.back()["error"] = write.error.message;
      lines.push_back(write.path + " by " + writer + outcomeText(write));
    }
    context.print(fresh, linesOf(lines, "nothing was written"));
    return StepOutcome{};
  };
}

Step parseShow(LineReader&) {
  return [](ScriptContext& context) {
    if (!context.application().isOpen()) return StepOutcome::notOpen();
    const std::string text = screenText(TreeQuery(context.application().tree()));
    context.print(text, text);
    return StepOutcome{};
  };
}

Step parseTree(LineReader&) {
  return [](ScriptContext& context) {
    if (!context.application().isOpen()) return StepOutcome::notOpen();
    const json& tree = context.application().tree();
    context.print(tree,
                  context.options().json ? std::string() : jsonText(tree, JsonStyle::indented));
    return StepOutcome{};
  };
}

// The node with its children instead of their identities.
json nested(const TreeQuery& query, const FoundNode& found) {
  json result = *found.node;
  result["node"] = found.id;
  result["children"] = json::array();
  for (const FoundNode& child : query.children(found)) {
    result["children"].push_back(nested(query, child));
  }
  return result;
}

Step parseReportOfRow(LineReader& reader) {
  return [address = reader.row()](ScriptContext& context) {
    json row;
    auto outcome = context.onRow(address, [&](const std::string& id) {
      const TreeQuery query(context.application().tree());
      row = nested(query, query.find(id));
      row["specifier"] = context.application().inspectRow(id);
      return StepOutcome{};
    });
    if (outcome.ok) context.print(row, jsonText(row, JsonStyle::indented));
    return outcome;
  };
}

Step parseReportOfLog(LineReader&) {
  return [](ScriptContext& context) {
    const json entries = context.application().logSince(context.logCursor);
    std::vector<std::string> lines;
    for (const json& entry : entries) lines.push_back(entry["message"].get<std::string>());
    context.print(entries, linesOf(lines));
    return StepOutcome{};
  };
}

Step parseFile(LineReader& reader) {
  return [path = reader.devicePath()](ScriptContext& context) {
    const platform::FileContents contents = context.application().device().read(path);
    if (contents.error) return StepOutcome::failed(contents.error.message);
    const platform::PropertyListResult list = platform::readPropertyList(contents.bytes);
    if (!list) return StepOutcome::failed(path + " is not a property list: " + list.error->text());
    const json result = jsonFromValue(list.value);
    context.print(result, jsonText(result, JsonStyle::indented));
    return StepOutcome{};
  };
}

}  // namespace

ScriptCommands reportCommands() {
  return {
      {"spawned", "spawned", "prints the programs that were started since the last call",
       &parseReportOfSpawned},
      {"writes", "writes", "prints the files that the bundle has written since the last call",
       &parseWrites},
      {"show", "show", "prints the screen as text", &parseShow},
      {"tree", "tree", "prints the view tree as JSON", &parseTree},
      {"row", "row ROW", "prints a row with its cell and its specifier's properties as JSON",
       &parseReportOfRow},
      {"log", "log", "prints the log since the last call", &parseReportOfLog},
      {"file", "file PATH", "prints a property list of the device tree as JSON", &parseFile},
  };
}

}  // namespace settings
