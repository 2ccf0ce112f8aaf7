#include <nlohmann/json.hpp>
#include <utility>

#include "settings/device/JsonText.h"
#include "settings/scripting/ScriptCommand.h"
#include "settings/scripting/ScriptContext.h"

namespace settings {
namespace {

using nlohmann::json;

struct Control {
  std::string id;
  json node;
};

// The control of the row, which is in sight, if it has this kind ("" for any).
Control controlOf(ScriptContext& context, const std::string& row, std::string_view kind) {
  const TreeQuery query(context.application().tree());
  const FoundNode found = query.control(query.find(row));
  if (!found || (!kind.empty() && TreeQuery::text(*found.node, "kind") != kind)) return {};
  return {found.id, *found.node};
}

StepOutcome slideTo(ScriptContext& context, const std::string& slider, double value) {
  json action{{"action", "slide"}, {"node", slider}, {"value", value}, {"phase", "move"}};
  StepOutcome moved = context.act(action);
  if (!moved.ok) return moved;
  action["phase"] = "end";
  return context.act(action);
}

StepOutcome typeText(ScriptContext& context, const std::string& field, const std::string& text) {
  for (const char* phase : {"begin", "change", "end"}) {
    StepOutcome outcome =
        context.act({{"action", "edit"}, {"node", field}, {"phase", phase}, {"string", text}});
    if (!outcome.ok || context.application().crash()) return outcome;
  }
  return {};
}

bool sameValue(const json& a, const json& b) {
  if (a.is_boolean() != b.is_boolean() && (a.is_number() || b.is_number())) {
    return (a.is_boolean() ? json(a.get<bool>() ? 1 : 0) : a) ==
           (b.is_boolean() ? json(b.get<bool>() ? 1 : 0) : b);
  }
  return a == b;
}

// The index of the value among the row's valid values, or of the title among the titles; -1 if
// there is neither.
int choiceIndex(const json& values, const json& titles, const json& wanted) {
  for (const json* list : {&values, &titles}) {
    if (!list->is_array()) continue;
    for (std::size_t i = 0; i < list->size(); ++i) {
      if (sameValue((*list)[i], wanted)) return static_cast<int>(i);
    }
  }
  return -1;
}

// A property of the row's specifier; null if absent.
json propertyOf(ScriptContext& context, const std::string& row, const char* name) {
  const json specifier = context.application().inspectRow(row);
  return specifier.is_object() ? specifier["properties"].value(name, json()) : json();
}

StepOutcome setSegment(ScriptContext& context, const std::string& row, const Control& control,
                       const json& value) {
  const json values = propertyOf(context, row, "validValues");
  const int index = choiceIndex(values, control.node["segments"], value);
  if (index < 0) {
    return StepOutcome::failed("not a choice of the row: " + jsonText(value) + " (values " +
                               jsonText(values) + ", titles " + jsonText(control.node["segments"]) +
                               ")");
  }
  return context.act({{"action", "segment"}, {"node", control.id}, {"index", index}});
}

StepOutcome setSwitch(ScriptContext& context, const Control& control, const json& value) {
  static const json names = {{"on", true},  {"off", false}, {"true", true}, {"false", false},
                             {"yes", true}, {"no", false},  {"1", true},    {"0", false}};
  const json state =
      names.value(value.is_string() ? value.get<std::string>() : jsonText(value), json());
  if (!state.is_boolean()) {
    return StepOutcome::failed("not a switch state: " + jsonText(value) + " (expected on or off)");
  }
  return context.act({{"action", "toggle"}, {"node", control.id}, {"on", state}});
}

// For a row without a control: taps it to open its list and chooses the value there.
StepOutcome setByList(ScriptContext& context, const std::string& row, const json& value) {
  const json titles = propertyOf(context, row, "validTitles");
  const int index = choiceIndex(propertyOf(context, row, "validValues"), titles, value);
  if (index < 0) {
    return StepOutcome::failed("the row has no control for a value, and " + jsonText(value) +
                               " is not one of its choices " + jsonText(titles));
  }
  StepOutcome opened = context.act({{"action", "tap"}, {"node", row}});
  if (!opened.ok || context.application().crash()) return opened;
  const RowAddress choice{RowAddress::By::position, {}, 1, 0, static_cast<std::size_t>(index)};
  StepOutcome chosen = context.onRow(choice, [&](const std::string& id) {
    return context.act({{"action", "tap"}, {"node", id}});
  });
  if (!chosen.ok || context.application().crash()) return chosen;
  const std::string navigation = TreeQuery(context.application().tree()).outerNavigation().id;
  return context.act({{"action", "back"}, {"node", navigation}});
}

StepOutcome setRow(ScriptContext& context, const std::string& row, const json& value) {
  const Control control = controlOf(context, row, "");
  if (control.id.empty()) return setByList(context, row, value);
  const std::string kind = control.node["kind"];
  if (kind == "switch") return setSwitch(context, control, value);
  if (kind == "segmented") return setSegment(context, row, control, value);
  if (kind == "textField") {
    return typeText(context, control.id,
                    value.is_string() ? value.get<std::string>() : jsonText(value));
  }
  if (!value.is_number()) return StepOutcome::failed("not a number: " + jsonText(value));
  return slideTo(context, control.id, value.get<double>());
}

Step parseSet(LineReader& reader) {
  const RowAddress address = reader.row();
  return [address, value = reader.value("VALUE")](ScriptContext& context) {
    return context.onRow(address,
                         [&](const std::string& row) { return setRow(context, row, value); });
  };
}

// Operates the row's control of that kind.
template <class Work>
Step controlStep(const RowAddress& address, std::string_view kind, const std::string& what,
                 Work work) {
  return [=](ScriptContext& context) {
    return context.onRow(address, [&](const std::string& row) {
      const Control control = controlOf(context, row, kind);
      if (!control.id.empty()) return work(context, control.id);
      return StepOutcome::failed("the row " + address.text() + " has no " + what);
    });
  };
}

Step parseType(LineReader& reader) {
  const RowAddress address = reader.row();
  return controlStep(
      address, "textField", "text field",
      [text = reader.quoted("\"text\"")](ScriptContext& context, const std::string& id) {
        return typeText(context, id, text);
      });
}

Step parseSlide(LineReader& reader) {
  const RowAddress address = reader.row();
  return controlStep(address, "slider", "slider",
                     [value = reader.number("N")](ScriptContext& context, const std::string& id) {
                       return slideTo(context, id, value);
                     });
}

}  // namespace

ScriptCommands controlCommands() {
  return {
      {"set", "set ROW VALUE",
       "sets the row's switch (on, off), segment or choice (value or title), slider or text",
       &parseSet},
      {"type", "type ROW \"text\"", "replaces the text of the row's field", &parseType},
      {"slide", "slide ROW N", "drags the row's slider to N and lets go", &parseSlide},
  };
}

}  // namespace settings
