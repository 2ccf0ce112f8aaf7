#include "settings/scripting/ScriptCommand.h"

#include <sstream>
#include <string_view>

namespace settings {
namespace {

void append(ScriptCommands& all, ScriptCommands more) {
  all.insert(all.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

ScriptCommands makeCommands() {
  ScriptCommands all;
  append(all, deviceCommands());
  append(all, handCommands());
  append(all, controlCommands());
  append(all, presentedCommands());
  append(all, timeCommands());
  append(all, messageCommands());
  append(all, reportCommands());
  append(all, requestCommands());
  append(all, expectationCommands());
  return all;
}

// The possible next words, without duplicates: for "expect row", first "expect", then "row".
std::string allowedNames(const ScriptCommands& commands, std::string_view taken) {
  std::string names;
  std::string last;
  for (const ScriptCommand& command : commands) {
    if (!command.name.starts_with(taken)) continue;
    const std::string rest = command.name.substr(taken.size());
    const std::string name = rest.substr(0, rest.find(' '));
    if (name != last) names += (names.empty() ? "" : ", ") + name;
    last = name;
  }
  return names;
}

// Reads the words of the name if they all come next.
bool takeName(const std::string& name, LineReader& reader) {
  LineReader ahead = reader;
  std::istringstream words(name);
  for (std::string word; words >> word;) {
    if (!ahead.skip(word)) return false;
  }
  reader = ahead;
  return true;
}

}  // namespace

const ScriptCommands& scriptCommands() {
  static const ScriptCommands commands = makeCommands();
  return commands;
}

const ScriptCommand* takeCommand(LineReader& reader) {
  for (const ScriptCommand& command : scriptCommands()) {
    if (takeName(command.name, reader)) return &command;
  }
  std::string taken;
  for (const char* word : {"expect ", "no "}) {
    if (!takeName(word, reader)) break;
    taken += word;
  }
  const std::string found = reader.atEnd() ? "nothing" : "\"" + reader.word("a command") + "\"";
  reader.fail(std::string(taken.empty() ? "unknown command: " : "unknown expectation: ") + found +
              " (expected " + allowedNames(scriptCommands(), taken) + ")");
  return nullptr;
}

}  // namespace settings
