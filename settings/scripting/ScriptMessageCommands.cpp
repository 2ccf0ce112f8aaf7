#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "platform/foundation/objects/Class.h"
#include "platform/foundation/objects/Process.h"
#include "platform/preferences/PSSpecifier.h"
#include "platform/uikit/tables/UITableView.h"
#include "settings/application/SettingsProcess.h"
#include "settings/scripting/ScriptCommand.h"
#include "settings/scripting/ScriptContext.h"
#include "settings/scripting/ScriptValues.h"

namespace settings {
namespace {

using nlohmann::json;
using platform::Object;
using platform::Value;

constexpr const char* targetHelp = "page, cell ROW, store, nav, outer or new CLASS";

// The receiver of an operation.
struct Target {
  enum class Kind { page, cell, store, nav, outer, made } kind = Kind::page;
  RowAddress row;         // of a cell
  std::string className;  // of a new object
};

// An argument: JSON, or a row, which stands for its specifier.
struct Argument {
  json value;
  std::optional<RowAddress> row;
};

Target readTarget(LineReader& reader) {
  Target target;
  if (reader.skip("page")) return target;
  if (reader.skip("store")) return {Target::Kind::store, {}, {}};
  if (reader.skip("nav")) return {Target::Kind::nav, {}, {}};
  if (reader.skip("outer")) return {Target::Kind::outer, {}, {}};
  if (reader.skip("cell")) return {Target::Kind::cell, reader.row(), {}};
  if (reader.skip("new")) return {Target::Kind::made, {}, reader.word("CLASS")};
  const std::string found = reader.atEnd() ? "nothing" : "\"" + reader.word("TARGET") + "\"";
  reader.fail("not a TARGET: " + found + " (expected " + targetHelp + ")");
  return target;
}

std::vector<Argument> readArguments(LineReader& reader) {
  std::vector<Argument> arguments;
  while (!reader.atEnd() && !reader.error()) {
    if (reader.peek() == '#') {
      arguments.push_back({{}, reader.row()});
    } else {
      arguments.push_back({reader.value("ARG"), {}});
    }
  }
  return arguments;
}

// The cell of a row; null if it has none.
std::shared_ptr<Object> cellOf(ScriptContext& context, const RowAddress& address,
                               StepOutcome& outcome) {
  std::shared_ptr<Object> cell;
  outcome = context.onRow(address, [&](const std::string& row) {
    const TreeQuery query(context.application().tree());
    const FoundNode found = query.firstOfKind(query.find(row), {"cell"});
    if (found) cell = context.application().objectAt(found.id);
    return cell ? StepOutcome{} : StepOutcome::failed("the row has no cell");
  });
  return cell;
}

// Runs in the process. If the selector starts with "init", it initialises the new object.
std::shared_ptr<Object> makeObject(const std::string& className, const std::string& selector) {
  const auto* const found = platform::Process::current().classes().find(className);
  if (!found) return nullptr;
  return selector.starts_with("init") ? found->allocate() : found->makeInstance();
}

std::shared_ptr<Object> objectOf(ScriptContext& context, const Target& target,
                                 const std::string& selector) {
  SettingsProcess& process = *context.application().process();
  switch (target.kind) {
    case Target::Kind::page:
      return process.topPage();
    case Target::Kind::nav:
      return process.inner();
    case Target::Kind::outer:
      return process.outer();
    case Target::Kind::made:
      return makeObject(target.className, selector);
    case Target::Kind::store: {
      const auto page = process.topPage();
      return page ? page->valueForKey("preferences").asObject() : nullptr;
    }
    case Target::Kind::cell:
      break;
  }
  return nullptr;
}

struct Values {
  std::vector<Value> values;
  StepOutcome outcome;
};

Values valuesOf(ScriptContext& context, const std::vector<Argument>& arguments) {
  Values result;
  for (const Argument& argument : arguments) {
    if (!argument.row) {
      PropertyListFromJson read = valueOrNone(argument.value);
      if (!read) result.outcome = StepOutcome::failed(*read.error);
      result.values.push_back(std::move(read.value));
      continue;
    }
    std::shared_ptr<platform::PSSpecifier> specifier;
    const StepOutcome found =
        context.withRow(*argument.row, [&](const TreeQuery&, const FoundNode& row) {
          specifier = context.application().specifierAt(row.id);
          return StepOutcome{};
        });
    if (!found.ok) result.outcome = found;
    result.values.emplace_back(specifier);
  }
  return result;
}

void printValue(ScriptContext& context, const Value& value) {
  context.print(jsonFromValue(value), plainText(value));
}

// Runs the work at the application's edge, where exceptions are caught.
StepOutcome atEdge(ScriptContext& context, const std::string& where,
                   const std::function<StepOutcome()>& work) {
  StepOutcome outcome;
  const ActionResult ran = context.application().runAtEdge(where, [&] { outcome = work(); });
  return ran ? outcome : outcomeOf(ran);
}

StepOutcome sendTo(ScriptContext& context, const std::shared_ptr<Object>& object,
                   const Target& target, const std::string& selector,
                   const std::vector<Value>& values) {
  if (!object) {
    return StepOutcome::failed(target.className.empty() ? "there is no such object at the moment"
                                                        : "there is no class " + target.className);
  }
  const Value result = object->perform(selector, values);
  const bool initialises = target.kind == Target::Kind::made && selector.starts_with("init");
  printValue(context, initialises && result.boolValue() ? Value(object) : result);
  return {};
}

Step parseSend(LineReader& reader) {
  const Target target = readTarget(reader);
  const std::string selector = reader.word("SELECTOR");
  const auto arguments = readArguments(reader);
  return [=](ScriptContext& context) {
    if (!context.application().isOpen()) return StepOutcome::notOpen();
    const Values values = valuesOf(context, arguments);
    if (!values.outcome.ok) return values.outcome;
    StepOutcome found;
    std::shared_ptr<Object> cell;
    if (target.kind == Target::Kind::cell) cell = cellOf(context, target.row, found);
    if (!found.ok) return found;
    return atEdge(context, "send " + selector, [&] {
      const auto object = cell ? cell : objectOf(context, target, selector);
      return sendTo(context, object, target, selector, values.values);
    });
  };
}

// Runs the work with the page on top.
StepOutcome onPage(ScriptContext& context, const std::string& where,
                   const std::function<void(Object&)>& work) {
  return atEdge(context, where, [&] {
    const auto page = context.application().process()->topPage();
    if (!page) return StepOutcome::failed("there is no page");
    work(*page);
    return StepOutcome{};
  });
}

Step parseGet(LineReader& reader) {
  return [keyPath = reader.word("KEYPATH")](ScriptContext& context) {
    return onPage(context, "get " + keyPath,
                  [&](Object& page) { printValue(context, page.valueForKeyPath(keyPath)); });
  };
}

Step parsePutValue(LineReader& reader) {
  const std::string keyPath = reader.word("KEYPATH");
  const PropertyListFromJson value = valueOrNone(reader.value("VALUE"));
  if (!value) reader.fail(*value.error);
  return [keyPath, value](ScriptContext& context) {
    return onPage(context, "put-value " + keyPath,
                  [&](Object& page) { page.setValueForKeyPath(value.value, keyPath); });
  };
}

}  // namespace

ScriptCommands messageCommands() {
  return {
      {"send", "send TARGET SELECTOR ARG...",
       "sends an operation by name and prints its result; TARGET is page, cell ROW, store, nav, "
       "outer or new CLASS, and an ARG is JSON, a word, or a row, which stands for its specifier",
       &parseSend},
      {"get", "get KEYPATH", "prints a value of the page by key", &parseGet},
      {"put-value", "put-value KEYPATH VALUE", "sets a value of the page by key", &parsePutValue},
  };
}

}  // namespace settings
