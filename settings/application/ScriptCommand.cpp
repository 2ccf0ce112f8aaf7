#include "settings/application/ScriptCommand.h"

#include <algorithm>

namespace settings {
namespace {

void append(ScriptCommands& all, ScriptCommands more) {
  all.insert(all.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

Step parseExpectation(LineReader& reader) {
  static const ScriptCommands forms = expectationCommands();
  const ScriptCommand* form = takeCommand(forms, reader);
  return form ? form->parse(reader) : Step();
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
  all.push_back({"expect", "expect ...",
                 "ends the script where something is not as told; see below", &parseExpectation});
  return all;
}

std::string quotedNames(const ScriptCommands& commands) {
  std::string names;
  for (const ScriptCommand& command : commands) {
    names += (names.empty() ? "" : ", ") + command.name;
  }
  return names;
}

}  // namespace

const ScriptCommands& scriptCommands() {
  static const ScriptCommands commands = makeCommands();
  return commands;
}

const ScriptCommand* takeCommand(const ScriptCommands& commands, LineReader& reader) {
  for (const ScriptCommand& command : commands) {
    if (reader.skip(command.name)) return &command;
  }
  const std::string found = reader.atEnd() ? "nothing" : "\"" + reader.word("a command") + "\"";
  reader.fail(found + " is no command; allowed are " + quotedNames(commands));
  return nullptr;
}

}  // namespace settings
