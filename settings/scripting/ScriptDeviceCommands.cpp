#include <charconv>
#include <nlohmann/json.hpp>

#include "platform/foundation/propertylist/PropertyList.h"
#include "settings/application/ControlCenterRow.h"
#include "settings/device/DevicePaths.h"
#include "settings/device/Traits.h"
#include "settings/scripting/ScriptCommand.h"
#include "settings/scripting/ScriptContext.h"
#include "settings/scripting/ScriptValues.h"

namespace settings {
namespace {

StepOutcome outcomeOfFile(const platform::FileError& error) {
  return error ? StepOutcome::failed(error.message) : StepOutcome{};
}

std::optional<std::string> problemOfTrait(const std::string& name, const std::string& value) {
  if (name == controlCenterRowTrait) {
    if (controlCenterRowNamed(value)) return std::nullopt;
    return controlCenterRowProblem(value);
  }
  platform::DeviceTraits scratch;
  return changeTrait(scratch, name, value);
}

Step parseTrait(LineReader& reader) {
  std::string name = reader.word("NAME");
  std::string value;
  if (name == "neighbour") {
    value = reader.word("CLASS");
    if (reader.error()) return {};
    const bool isOn = reader.skip("on");
    if (!isOn && !reader.skip("off")) reader.fail("expected on or off after CLASS");
    value += isOn ? " on" : " off";
  } else {
    value = reader.word("VALUE");
    if (reader.error()) return {};
    if (const auto problem = problemOfTrait(name, value)) reader.fail(*problem);
  }
  return [name, value](ScriptContext& context) {
    return outcomeOf(context.application().setTrait(name, value));
  };
}

StepOutcome putBytes(ScriptContext& context, const std::string& path, const std::string& bytes) {
  platform::FileSystem& device = context.application().device();
  const std::string folder = path.substr(0, path.rfind('/'));
  if (!folder.empty() && !device.fileExists(folder)) {
    if (const auto error = device.createDirectory(folder))
      return StepOutcome::failed(error.message);
  }
  return outcomeOfFile(device.writeAtomically(path, bytes));
}

Step putFile(std::string path, std::string file) {
  return [path = std::move(path), file = std::move(file)](ScriptContext& context) {
    const ScriptFile contents = context.readFile(file);
    if (!contents.problem.empty()) return StepOutcome::failed(contents.problem);
    return putBytes(context, path, contents.bytes);
  };
}

Step parsePut(LineReader& reader) {
  std::string path = reader.devicePath();
  if (reader.error()) return {};
  if (reader.peek() == '@') return putFile(std::move(path), reader.rest("FILE").substr(1));
  const std::string text = reader.rest("JSON or @FILE");
  if (reader.error()) return {};
  const ScriptJson parsed = jsonOfText(text);
  if (!parsed.problem.empty()) {
    reader.fail("\"" + text + "\" " + parsed.problem +
                " (expected JSON, JSON in double quotes, or @FILE after PATH)");
    return {};
  }
  const PropertyListFromJson list = valueFromJson(parsed.value);
  const platform::PropertyListText xml = platform::writeXmlPropertyList(list.value);
  if (const auto& problem = list ? xml.error : list.error) {
    reader.fail("this cannot be a property list: " + *problem);
  }
  return
      [path, bytes = xml.bytes](ScriptContext& context) { return putBytes(context, path, bytes); };
}

Step parseRemove(LineReader& reader) {
  return [path = reader.devicePath()](ScriptContext& context) {
    return outcomeOfFile(context.application().device().remove(path));
  };
}

Step parseMode(LineReader& reader) {
  const std::string text = reader.word("MODE");
  std::uint32_t mode = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), mode, 8);
  if (error != std::errc() || end != text.data() + text.size() || mode > 07777) {
    reader.fail("not a mode: \"" + text + "\" (expected octal digits such as 644 or 000)");
  }
  return [mode, path = reader.devicePath()](ScriptContext& context) {
    return outcomeOfFile(context.application().device().setMode(path, mode));
  };
}

Step parseLink(LineReader& reader) {
  std::string path = reader.devicePath();
  return [path = std::move(path), target = reader.word("TARGET")](ScriptContext& context) {
    return outcomeOfFile(context.application().device().createSymbolicLink(path, target));
  };
}

// A stand-in prints the file with this name instead of its own output.
Step parseStdout(LineReader& reader) {
  const std::string program = reader.devicePath();
  return putFile(program + std::string(programOutputSuffix), reader.rest("FILE"));
}

Step parsePatience(LineReader& reader) {
  const double seconds = reader.number("SECONDS");
  if (seconds < 0) reader.fail("SECONDS must be 0 or more");
  return [seconds](ScriptContext& context) {
    context.application().setPatience(seconds);
    return StepOutcome{};
  };
}

Step parseOpen(LineReader&) {
  return [](ScriptContext& context) {
    context.application().open();
    return StepOutcome{};
  };
}

}  // namespace

ScriptCommands deviceCommands() {
  return {
      {"trait", "trait NAME VALUE",
       "sets a trait of the device: " + traitNames() +
           "; or, from the next `open` on, neighbour CLASS on|off, or controlCenterRow "
           "present|missing|raises, the "
           "row of the application's own list that the bundle's page asks for",
       &parseTrait},
      {"put", "put PATH JSON|@FILE", "writes a property list, or the bytes of a file", &parsePut},
      {"rm", "rm PATH", "removes a file, or a folder with what is in it", &parseRemove},
      {"chmod", "chmod MODE PATH", "sets the permission bits, in octal digits", &parseMode},
      {"link", "link PATH TARGET", "makes a symbolic link at PATH that points to TARGET",
       &parseLink},
      {"stdout", "stdout PROGRAM FILE",
       "sets the output of the program's stand-in to the content of a file", &parseStdout},
      {"patience", "patience SECONDS",
       "ends a program when a page has waited this long for it, in seconds of real time (default "
       "5)",
       &parsePatience},
      {"open", "open", "starts a new process of the Settings application on the bundle's root page",
       &parseOpen},
  };
}

}  // namespace settings
