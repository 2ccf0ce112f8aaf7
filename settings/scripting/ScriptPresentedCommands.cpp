// User actions on what is presented over the pages: sheets and pickers.

#include <nlohmann/json.hpp>
#include <utility>

#include "platform/uikit/drawing/UIColor.h"
#include "settings/device/JsonText.h"
#include "settings/device/PhotoLibrary.h"
#include "settings/scripting/ScriptCommand.h"
#include "settings/scripting/ScriptContext.h"

namespace settings {
namespace {

using nlohmann::json;

// Passes the identity and a copy of the node of what is presented to the work.
template <class Work>
StepOutcome onPresented(ScriptContext& context, const std::string& missing, Work work) {
  if (!context.application().isOpen()) return StepOutcome::notOpen();
  const FoundNode found = TreeQuery(context.application().tree()).presented();
  if (!found) return StepOutcome::failed(missing);
  return work(found.id, json(*found.node));
}

StepOutcome choose(ScriptContext& context, const std::string& sheet, const json& node,
                   const std::string& label) {
  const json& actions = node.value("actions", json::array());
  std::string titles;
  for (std::size_t i = 0; i < actions.size(); ++i) {
    if (actions[i]["title"] == label) {
      return context.act({{"action", "choose"}, {"node", sheet}, {"index", i}});
    }
    titles += (titles.empty() ? "" : ", ") + jsonText(actions[i]["title"]);
  }
  return StepOutcome::failed("not a choice of the " + TreeQuery::text(node, "kind") + ": " +
                             jsonText(json(label)) +
                             " (choices: " + (titles.empty() ? "none" : titles) + ")");
}

Step parseChoose(LineReader& reader) {
  return [label = reader.quoted("\"label\"")](ScriptContext& context) {
    return onPresented(context, "there is no open sheet to choose in",
                       [&](const std::string& sheet, const json& node) {
                         return choose(context, sheet, node, label);
                       });
  };
}

Step parseClose(LineReader&) {
  return [](ScriptContext& context) {
    return onPresented(context, "there is nothing open to close",
                       [&](const std::string& id, const json&) {
                         return context.act({{"action", "close"}, {"node", id}});
                       });
  };
}

// Parses "FF0000" or "FF0000CC", with or without "#" in front, into components from 0 to 1.
json readColour(LineReader& reader) {
  constexpr std::size_t opaqueLength = 6;
  const std::string word = reader.word("COLOUR");
  std::string text = word.substr(word.starts_with('#') ? 1 : 0);
  if (text.size() == opaqueLength) text += "FF";
  const auto components = platform::colorComponentsFromHex(text);
  if (!components) {
    reader.fail("not a COLOUR: \"" + word + "\" (expected RRGGBB or RRGGBBAA, such as FF0000)");
    return {};
  }
  return {components->red, components->green, components->blue, components->alpha};
}

Step parsePick(LineReader& reader) {
  return [rgba = readColour(reader)](ScriptContext& context) {
    return onPresented(context, "there is no open colour picker",
                       [&](const std::string& id, const json&) {
                         return context.act({{"action", "pick"}, {"node", id}, {"rgba", rgba}});
                       });
  };
}

// A photo of the device's library by its name, or a file of this machine.
StepOutcome choosePhoto(ScriptContext& context, const std::string& picker,
                        const std::string& photo) {
  if (!photo.starts_with('@')) {
    return context.act({{"action", "photo"}, {"node", picker}, {"name", photo}});
  }
  const ScriptFile file = context.readFile(photo.substr(1));
  if (!file.problem.empty()) return StepOutcome::failed(file.problem);
  return outcomeOf(
      context.application().choosePhoto(picker, readPhoto(platform::Data(file.bytes))));
}

Step parsePhoto(LineReader& reader) {
  return [photo = reader.word("FILE")](ScriptContext& context) {
    return onPresented(
        context, "there is no open photo picker",
        [&](const std::string& id, const json&) { return choosePhoto(context, id, photo); });
  };
}

}  // namespace

ScriptCommands presentedCommands() {
  return {
      {"pick", "pick COLOUR",
       "picks a colour, RRGGBB or RRGGBBAA, in the open colour picker, which stays open",
       &parsePick},
      {"photo", "photo FILE",
       "chooses a photo of the library by its name, or with @ in front a file of this machine",
       &parsePhoto},
      {"choose", "choose \"label\"", "taps a choice of the open sheet", &parseChoose},
      {"close", "close", "closes what is open, without a choice", &parseClose},
      {"cancel", "cancel", "taps the cancel choice of what is open", &parseClose},
  };
}

}  // namespace settings
