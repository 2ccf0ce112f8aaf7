#include "settings/scripting/ScriptRunner.h"

#include <istream>
#include <ostream>
#include <string_view>
#include <utility>

#include "settings/scripting/ScriptCommand.h"
#include "settings/scripting/ScriptContext.h"

namespace settings {
namespace {

struct Line {
  std::size_t number = 0;
  std::string text;
  std::string command;
  Step step;
};

// Parses the line into a step; no step for an empty line.
Line parseLine(std::size_t number, const std::string& text, std::string& problem) {
  Line line{number, text, {}, {}};
  LineReader reader(text);
  if (reader.atEnd()) return line;
  const ScriptCommand* command = takeCommand(reader);
  std::string usage;
  if (command) {
    line.command = command->name;
    line.step = command->parse(reader);
    usage = "; usage: " + command->usage;
    reader.expectEnd();
  }
  if (reader.error()) problem = *reader.error() + usage;
  return line;
}

// The start of the character that contains `index`; `index` itself if the text is not UTF-8 there.
std::size_t characterStart(std::string_view text, std::size_t index) {
  constexpr std::size_t mostBytesBehindTheFirst = 3;
  for (std::size_t back = 0; back <= mostBytesBehindTheFirst && back <= index; ++back) {
    if ((static_cast<unsigned char>(text[index - back]) & 0xC0U) != 0x80) return index - back;
  }
  return index;
}

// Shortens a very long text in the middle, so that messages stay readable and keep their end.
std::string withoutMiddle(std::string_view text) {
  constexpr std::size_t longest = 2000;
  if (text.size() <= longest) return std::string(text);
  const std::size_t cut = characterStart(text, longest / 2);
  const std::size_t goesOn = characterStart(text, text.size() - longest / 2);
  return std::string(text.substr(0, cut)) + " [" + std::to_string(goesOn - cut) +
         " bytes omitted] " + std::string(text.substr(goesOn));
}

bool expectsException(const Line& line) {
  LineReader reader(line.text);
  return reader.skip("expect") && reader.skip("exception");
}

std::string describe(const CrashReport& crash) {
  return crash.name + ": " + crash.reason + " (in " + crash.where + ")";
}

// Parses and plays the lines of one script.
class Player {
 public:
  Player(Application& application, std::ostream& output, std::ostream& messages,
         const ScriptOptions& options)
      : _context(application, output, options), _messages(messages), _options(options) {}

  bool parse(std::istream& script) {
    std::string text;
    bool good = true;
    for (std::size_t number = 1; std::getline(script, text); ++number) {
      std::string problem;
      Line line = parseLine(number, text, problem);
      if (!problem.empty()) good = false;
      if (!problem.empty()) complain(line, problem);
      if (line.step) _lines.push_back(std::move(line));
    }
    return good;
  }

  bool play() {
    for (const Line& line : _lines) {
      if (!crashIsExpected(line)) return false;
      _last = &line;
      _context.beginLine(line.number, line.command);
      const StepOutcome outcome = line.step(_context);
      // An exception explains more than the failure that follows from it. But a line that expects
      // another exception reports its own failure.
      const bool isTold = !_context.application().crash() || expectsException(line);
      if (!outcome.ok && isTold) return fail(line, outcome);
    }
    return !reportCrash();
  }

 private:
  void complain(const Line& line, const std::string& what) {
    _messages << _options.name << ", line " << line.number << ": " << withoutMiddle(what) << "\n  "
              << withoutMiddle(line.text) << '\n';
  }

  bool fail(const Line& line, const StepOutcome& outcome) {
    complain(line, outcome.message);
    if (outcome.expected) _messages << "  expected: " << withoutMiddle(*outcome.expected) << '\n';
    if (outcome.actual) _messages << "  actual:   " << withoutMiddle(*outcome.actual) << '\n';
    _context.printFailure(outcome);
    return false;
  }

  bool crashIsExpected(const Line& next) { return expectsException(next) || !reportCrash(); }

  // Returns whether a crash report is open. Reports it as the failure of the line that raised it.
  bool reportCrash() {
    const auto& crash = _context.application().crash();
    if (!crash || !_last) return false;
    fail(*_last,
         StepOutcome::failed("an exception was raised that the next line does not expect: " +
                             describe(*crash)));
    return true;
  }

  ScriptContext _context;
  std::ostream& _messages;
  const ScriptOptions& _options;
  std::vector<Line> _lines;
  const Line* _last = nullptr;
};

}  // namespace

ScriptRunner::ScriptRunner(Application& application, std::ostream& output, std::ostream& messages,
                           ScriptOptions options)
    : _application(application),
      _output(output),
      _messages(messages),
      _options(std::move(options)) {}

ScriptStatus ScriptRunner::run(std::istream& script) {
  Player player(_application, _output, _messages, _options);
  if (!player.parse(script)) return ScriptStatus::badLine;
  return player.play() ? ScriptStatus::done : ScriptStatus::failed;
}

std::vector<ScriptCommandHelp> ScriptRunner::help() {
  std::vector<ScriptCommandHelp> result;
  for (const ScriptCommand& command : scriptCommands()) {
    result.push_back({command.usage, command.text});
  }
  return result;
}

}  // namespace settings
