// The "expect ..." commands.

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

#include "settings/device/JsonText.h"
#include "settings/panes/FilePane.h"
#include "settings/panes/PreferenceValue.h"
#include "settings/scripting/ScreenText.h"
#include "settings/scripting/ScriptCommand.h"
#include "settings/scripting/ScriptContext.h"

namespace settings {
namespace {

using nlohmann::json;

StepOutcome compare(bool holds, const std::string& expected, const std::string& actual) {
  return holds ? StepOutcome{} : StepOutcome::unexpected(expected, actual);
}

std::string quote(const std::string& text) {
  return "\"" + text + "\"";
}

Step parseTitle(LineReader& reader) {
  return [title = reader.quoted("\"T\"")](ScriptContext& context) {
    if (!context.application().isOpen()) return StepOutcome::notOpen();
    const FoundNode page = TreeQuery(context.application().tree()).page();
    const std::string actual = page ? TreeQuery::text(*page.node, "title") : "";
    return compare(actual == title, "title " + quote(title), "title " + quote(actual));
  };
}

// Compares a value as users write it: a switch is on or off, and numbers are compared by value.
bool showsValue(const json& shown, const json& wanted) {
  if (shown.is_boolean()) {
    static const json states = {{"on", true}, {"off", false}, {"yes", true}, {"no", false}};
    if (wanted.is_string()) return states.value(wanted.get<std::string>(), json()) == shown;
    if (wanted.is_number()) return wanted == (shown.get<bool>() ? 1 : 0);
    return wanted == shown;
  }
  if (shown.is_number() && wanted.is_number()) {
    return std::abs(shown.get<double>() - wanted.get<double>()) < 1e-6;
  }
  if (shown.is_string() && !wanted.is_string()) return shown.get<std::string>() == jsonText(wanted);
  return shown == wanted;
}

Step parseRow(LineReader& reader) {
  const RowAddress address = reader.row();
  std::optional<json> wanted;
  if (reader.skip("value")) wanted = reader.value("V");
  return [address, wanted](ScriptContext& context) {
    const StepOutcome found =
        context.withRow(address, [](const TreeQuery&, const FoundNode&) { return StepOutcome{}; });
    if (!found.ok) {
      return StepOutcome::unexpected("a row " + address.text(), found.message);
    }
    if (!wanted) return StepOutcome{};
    return context.onRow(address, [&](const std::string& row) {
      const TreeQuery query(context.application().tree());
      const json shown = query.shownValue(query.find(row));
      return compare(showsValue(shown, *wanted), "value " + jsonText(*wanted),
                     "value " + jsonText(shown));
    });
  };
}

bool areNamed(const std::vector<FoundNode>& rows, const std::vector<RowAddress>& names) {
  return std::ranges::equal(rows, names, [](const FoundNode& row, const RowAddress& name) {
    return TreeQuery::isNamed(*row.node, name);
  });
}

std::string listText(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += " " + name;
  return text.empty() ? " none" : text;
}

// The title and "#identifier" of a row, if present.
std::string namesOfRow(const json& row) {
  const std::string title = TreeQuery::text(row, "title");
  const std::string name = TreeQuery::rowName(row);
  return title.empty() || name == quote(title) ? name : quote(title) + " (" + name + ")";
}

Step parseRows(LineReader& reader) {
  const std::size_t index = reader.index("SECTION");
  std::vector<RowAddress> names;
  while (!reader.atEnd() && !reader.error()) names.push_back(reader.row());
  if (std::ranges::find(names, RowAddress::By::position, &RowAddress::by) != names.end()) {
    reader.fail("name the rows by #identifier or by a label in quotes");
  }
  return [index, names](ScriptContext& context) {
    if (!context.application().isOpen()) return StepOutcome::notOpen();
    const TreeQuery query(context.application().tree());
    const auto sections = query.sections();
    if (index >= sections.size()) {
      return StepOutcome::failed("the page has " + std::to_string(sections.size()) + " sections");
    }
    const auto rows = query.children(sections[index]);
    std::vector<std::string> expected;
    std::vector<std::string> actual;
    expected.reserve(names.size());
    actual.reserve(rows.size());
    for (const RowAddress& name : names) expected.push_back(name.text());
    for (const FoundNode& row : rows) actual.push_back(namesOfRow(*row.node));
    return compare(areNamed(rows, names), "the rows" + listText(expected),
                   "the rows" + listText(actual));
  };
}

Step parseNoRow(LineReader& reader) {
  return [address = reader.row()](ScriptContext& context) {
    if (!context.application().isOpen()) return StepOutcome::notOpen();
    const TreeQuery query(context.application().tree());
    return compare(!query.row(address), "no row " + address.text(),
                   "there is one among " + query.rowNames());
  };
}

Step parsePref(LineReader& reader) {
  const std::string key = reader.word("KEY");
  const std::string type = reader.word("TYPE");
  if (!reader.error() && !isPreferenceType(type)) {
    reader.fail("not a TYPE: " + quote(type) + " (expected " + preferenceTypeNames() + ")");
  }
  const json value = type == "string" ? json(reader.word("VALUE")) : reader.value("VALUE");
  if (!reader.error() && !isOfPreferenceType(type, value)) {
    reader.fail("not a VALUE of the type " + type + ": " + jsonText(value));
  }
  return [=](ScriptContext& context) {
    const PreferenceLookup found = lookUpPreference(context.application().device(), key);
    const std::string expected = key + " " + type + " " + jsonText(value);
    return compare(found.value && matchesPreference(*found.value, type, value), expected,
                   found.value ? key + " " + describePreference(*found.value) : found.problem);
  };
}

Step parseNoPref(LineReader& reader) {
  return [key = reader.word("KEY")](ScriptContext& context) {
    const PreferenceLookup found = lookUpPreference(context.application().device(), key);
    return compare(found.isAbsent, "no value under " + key,
                   found.value ? describePreference(*found.value) : found.problem);
  };
}

Step parseNoWrites(LineReader&) {
  return [](ScriptContext& context) {
    const auto writes = context.application().writesSince(context.writesCursor);
    std::string paths;
    for (const auto& write : writes) paths += (paths.empty() ? "" : ", ") + write.path;
    return compare(writes.empty(), "no writes", "written: " + paths);
  };
}

Step parseFooter(LineReader& reader) {
  const RowAddress address = reader.row();
  const std::string footer = reader.quoted("\"text\"");
  return [=](ScriptContext& context) {
    if (!context.application().isOpen()) return StepOutcome::notOpen();
    const FoundNode section = TreeQuery(context.application().tree()).section(address);
    if (!section) {
      return StepOutcome::unexpected("a group " + address.text(), "there is no such group or row");
    }
    const std::string actual = TreeQuery::text(*section.node, "footer");
    return compare(actual == footer, "footer " + quote(footer), "footer " + quote(actual));
  };
}

Step parseOpacity(LineReader& reader) {
  const bool outer = reader.skip("outer");
  if (!outer && !reader.skip("inner")) reader.fail("expected outer N or inner N after \"opacity\"");
  const double wanted = reader.number("N");
  return [=](ScriptContext& context) {
    if (!context.application().isOpen()) return StepOutcome::notOpen();
    const TreeQuery query(context.application().tree());
    const FoundNode bar = outer ? query.outerNavigation() : query.innerNavigation();
    if (!bar) return StepOutcome::failed("there is no navigation bar");
    const double actual = (*bar.node)["bar"].value("titleOpacity", 1.0);
    return compare(std::abs(actual - wanted) < 1e-9, "title opacity " + jsonText(json(wanted)),
                   "title opacity " + jsonText(json(actual)));
  };
}

// The first line of the log that contains the text.
std::optional<std::string> logLineWith(const std::vector<platform::LogEntry>& entries,
                                       const std::string& text) {
  for (const auto& entry : entries) {
    if (entry.message.find(text) != std::string::npos) return entry.message;
  }
  return std::nullopt;
}

Step parseLog(LineReader& reader) {
  return [text = reader.quoted("\"text\"")](ScriptContext& context) {
    std::uint64_t cursor = 0;
    const auto entries = context.application().logEntriesSince(cursor);
    if (logLineWith(entries, text)) return StepOutcome{};
    const std::string last = entries.empty() ? "the log is empty"
                                             : std::to_string(entries.size()) +
                                                   " lines, the last: " + entries.back().message;
    return StepOutcome::unexpected("a line of the log with " + quote(text), last);
  };
}

Step parseNoLog(LineReader& reader) {
  return [text = reader.quoted("\"text\"")](ScriptContext& context) {
    std::uint64_t cursor = 0;
    const auto found = logLineWith(context.application().logEntriesSince(cursor), text);
    return compare(!found, "no line of the log with " + quote(text), found.value_or(""));
  };
}

std::vector<std::string> words(LineReader& reader) {
  std::vector<std::string> result;
  while (!reader.atEnd() && !reader.error()) result.push_back(reader.word("ARG"));
  return result;
}

// The program's arguments, with or without its own name in front.
bool wasStartedWith(const platform::ProgramRequest& request,
                    const std::vector<std::string>& arguments) {
  if (request.arguments == arguments) return true;
  return !request.arguments.empty() &&
         std::vector(request.arguments.begin() + 1, request.arguments.end()) == arguments;
}

Step parseSpawned(LineReader& reader) {
  const std::string path = reader.devicePath();
  const auto arguments = words(reader);
  return [=](ScriptContext& context) {
    context.application().waitForPrograms();
    for (const auto& record : context.application().programRecords()) {
      if (record.request.path == path && wasStartedWith(record.request, arguments))
        return StepOutcome{};
    }
    std::string expected = path;
    for (const auto& argument : arguments) expected += " " + argument;
    std::string started;
    for (const auto& program : context.application().programs()) {
      started += (started.empty() ? "" : "; ") + programText(program);
    }
    return StepOutcome::unexpected(expected, started.empty() ? "nothing was started" : started);
  };
}

// Answers the crash report with "continue", so that the script can go on.
Step parseException(LineReader& reader) {
  return [name = reader.word("NAME")](ScriptContext& context) {
    const auto crash = context.application().crash();
    if (!crash) return StepOutcome::unexpected("exception " + name, "nothing was raised");
    if (crash->name != name) {
      return StepOutcome::unexpected("exception " + name, crash->name + ": " + crash->reason);
    }
    const TreeQuery query(context.application().tree());
    return context.act({{"action", "continue"}, {"node", query.presented().id}});
  };
}

}  // namespace

ScriptCommands expectationCommands() {
  return {
      {"expect title", "expect title \"T\"", "the title of the page", &parseTitle},
      {"expect rows", "expect rows SECTION ROW...",
       "the rows of the section, all of them and in this order, by #identifier or label",
       &parseRows},
      {"expect row", "expect row ROW [value V]", "the row exists and shows the value", &parseRow},
      {"expect no row", "expect no row ROW", "there is no such row", &parseNoRow},
      {"expect no pref", "expect no pref KEY", "the preference file has no value for the key",
       &parseNoPref},
      {"expect no log", "expect no log \"text\"", "no line of the log contains the text",
       &parseNoLog},
      {"expect no writes", "expect no writes", "nothing was written since the last `writes`",
       &parseNoWrites},
      {"expect pref", "expect pref KEY TYPE VALUE",
       "the value in the preference file; TYPE is integer, real, bool, string, data, array or dict",
       &parsePref},
      {"expect footer", "expect footer ROW \"text\"",
       "the footer of the group, or of the group of the row", &parseFooter},
      {"expect opacity", "expect opacity outer|inner N",
       "the opacity of the title in a navigation bar", &parseOpacity},
      {"expect log", "expect log \"text\"", "a line of the log contains the text", &parseLog},
      {"expect spawned", "expect spawned PATH ARG...",
       "the program was started with these arguments", &parseSpawned},
      {"expect exception", "expect exception NAME",
       "the line before raised the exception; the script goes on with the page as it is",
       &parseException},
  };
}

}  // namespace settings
