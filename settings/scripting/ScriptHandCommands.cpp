#include <nlohmann/json.hpp>
#include <utility>

#include "settings/scripting/ScriptCommand.h"
#include "settings/scripting/ScriptContext.h"

namespace settings {
namespace {

using nlohmann::json;

// Performs the action, to which the row's node is added.
Step rowAction(LineReader& reader, json action) {
  return [address = reader.row(), action = std::move(action)](ScriptContext& context) {
    return context.onRow(address, [&](const std::string& row) {
      json whole = action;
      whole["node"] = row;
      return context.act(whole);
    });
  };
}

Step parseTap(LineReader& reader) {
  return rowAction(reader, {{"action", "tap"}});
}

Step parseCommit(LineReader& reader) {
  return rowAction(reader, {{"action", "commit"}});
}

double seconds(LineReader& reader) {
  const double result = reader.number("SECONDS");
  if (result < 0) reader.fail("SECONDS must be 0 or more; time cannot go back");
  return result;
}

Step parsePress(LineReader& reader) {
  const RowAddress address = reader.row();
  return [address, duration = seconds(reader)](ScriptContext& context) {
    return context.onRow(address, [&](const std::string& row) {
      json action{{"action", "press"}, {"node", row}, {"phase", "begin"}};
      StepOutcome outcome = context.act(action);
      if (!outcome.ok) return outcome;
      outcome = outcomeOf(context.application().advance(duration));
      if (!outcome.ok || context.application().crash()) return outcome;
      action["phase"] = "end";
      return context.act(action);
    });
  };
}

Step parseMove(LineReader& reader) {
  const RowAddress address = reader.row();
  if (!reader.skip("to")) reader.fail("expected \"to SECTION INDEX\" after ROW");
  const std::size_t section = reader.index("SECTION");
  const std::size_t index = reader.index("INDEX");
  return [=](ScriptContext& context) {
    return context.onRow(address, [&](const std::string& row) {
      return context.act(
          {{"action", "move"}, {"node", row}, {"section", section}, {"index", index}});
    });
  };
}

// Performs the action on the node that `find` returns; fails with `missing` if there is none.
template <class Find>
StepOutcome actOn(ScriptContext& context, json action, Find find, const std::string& missing) {
  if (!context.application().isOpen()) return StepOutcome::notOpen();
  const FoundNode node = find(TreeQuery(context.application().tree()));
  if (!node) return StepOutcome::failed(missing);
  action["node"] = node.id;
  return context.act(action);
}

Step parseScroll(LineReader& reader) {
  return [offset = reader.number("Y")](ScriptContext& context) {
    return actOn(
        context, {{"action", "scroll"}, {"offset", offset}},
        [](const TreeQuery& query) { return query.table(); },
        "the page has no table that can be scrolled");
  };
}

Step parseBack(LineReader&) {
  return [](ScriptContext& context) {
    return actOn(
        context, {{"action", "back"}},
        [](const TreeQuery& query) { return query.outerNavigation(); }, "there is no navigation");
  };
}

}  // namespace

ScriptCommands handCommands() {
  return {
      {"tap", "tap ROW", "taps the row", &parseTap},
      {"press", "press ROW SECONDS", "a long press; moves the clock", &parsePress},
      {"insert", "insert ROW", "taps the insert control of a row of an editing table",
       &parseCommit},
      {"delete", "delete ROW", "taps the delete control of a row of an editing table",
       &parseCommit},
      {"move", "move ROW to SECTION INDEX",
       "drags a row of an editing table; INDEX counts the rows without the dragged one",
       &parseMove},
      {"scroll", "scroll Y", "drags the table to the content offset Y", &parseScroll},
      {"back", "back", "goes back to the previous page", &parseBack},
  };
}

}  // namespace settings
