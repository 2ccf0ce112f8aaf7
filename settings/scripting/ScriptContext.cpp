#include "settings/scripting/ScriptContext.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <utility>

#include "settings/device/JsonText.h"

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
    _output << jsonText(json{{"line", _line}, {"command", _command}, {"result", result}}) << '\n';
  } else if (!plain.empty()) {
    _output << plain << (plain.back() == '\n' ? "" : "\n");
  }
}

void ScriptContext::printFailure(const StepOutcome& outcome) {
  if (!_options.json) return;
  json failure{{"line", _line}, {"command", _command}, {"failure", outcome.message}};
  if (outcome.expected) failure["expected"] = *outcome.expected;
  if (outcome.actual) failure["actual"] = *outcome.actual;
  _output << jsonText(failure) << '\n';
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
  const std::filesystem::path full = std::filesystem::path(_options.folder) / path;
  std::error_code error;
  std::ifstream input;
  // Rejects files that never end, such as devices.
  if (std::filesystem::is_regular_file(full, error)) input.open(full, std::ios::binary);
  if (!input.is_open()) return {{}, "cannot read the file " + full.string()};
  return {{std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()}, {}};
}

}  // namespace settings
