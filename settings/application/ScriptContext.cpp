#include "settings/application/ScriptContext.h"

#include <fstream>
#include <ostream>
#include <sstream>
#include <utility>

namespace settings {

using nlohmann::json;

StepOutcome outcomeOf(const ActionResult& result) {
  return result ? StepOutcome{} : StepOutcome::failed(result.message);
}

void ScriptContext::beginLine(std::size_t number, std::string command) {
  _line = number;
  _command = std::move(command);
}

void ScriptContext::print(const json& result, const std::string& plain) {
  if (_options.json) {
    _output << json{{"line", _line}, {"command", _command}, {"result", result}}.dump(
                   -1, ' ', false, json::error_handler_t::replace)
            << '\n';
  } else if (!plain.empty()) {
    _output << plain << (plain.back() == '\n' ? "" : "\n");
  }
}

void ScriptContext::printFailure(const StepOutcome& outcome) {
  if (!_options.json) return;
  json failure{{"line", _line}, {"command", _command}, {"failure", outcome.message}};
  if (outcome.expected) failure["expected"] = *outcome.expected;
  if (outcome.actual) failure["actual"] = *outcome.actual;
  _output << failure.dump(-1, ' ', false, json::error_handler_t::replace) << '\n';
}

StepOutcome ScriptContext::act(const json& action) {
  return outcomeOf(_application.perform(action));
}

StepOutcome ScriptContext::withRow(
    const RowAddress& address,
    const std::function<StepOutcome(const TreeQuery&, const FoundNode&)>& work) {
  if (!_application.isOpen()) return StepOutcome::notOpen();
  const TreeQuery query(_application.tree());
  const FoundNode row = query.row(address);
  if (row) return work(query, row);
  return StepOutcome::failed("there is no row " + address.text() + "; there are " +
                             query.rowNames());
}

StepOutcome ScriptContext::onRow(const RowAddress& address,
                                 const std::function<StepOutcome(const std::string&)>& work) {
  std::string id;
  StepOutcome found = withRow(address, [&](const TreeQuery&, const FoundNode& row) {
    id = row.id;
    return StepOutcome{};
  });
  if (!found.ok) return found;
  if (const ActionResult shown = _application.reveal(id); !shown) return outcomeOf(shown);
  return work(id);
}

ScriptFile ScriptContext::readFile(const std::string& path) const {
  const std::string full = path.starts_with("/") ? path : _options.folder + "/" + path;
  std::ifstream input(full, std::ios::binary);
  std::ostringstream bytes;
  if (input) bytes << input.rdbuf();
  if (!input || !bytes) return {{}, "cannot read the file " + full};
  return {bytes.str(), {}};
}

}  // namespace settings
