#include "settings/cli/checks/SmokeWalk.h"

#include <utility>

namespace settings {

namespace {

constexpr int deepestPage = 6;
constexpr double settleSeconds = 1;

// An action that always raises in this product, and its exception.
constexpr const char* raisingAction = "restoreToggleSize";
constexpr const char* raisedName = "NSInvalidArgumentException";
constexpr const char* raisedSelector = "setFloat:forKey:";

// On a page of choices, a tap chooses; it opens nothing.
bool isPageOfChoices(const FoundNode& page) {
  return page && TreeQuery::text(*page.node, "class") == "PSListItemsController";
}

std::string nameOf(const nlohmann::json& row) {
  const std::string title = TreeQuery::text(row, "title");
  return "\"" + (title.empty() ? TreeQuery::text(row, "identifier") : title) + "\"";
}

}  // namespace

SmokeWalk::SmokeWalk(Application& application, std::string configuration, SmokeReport& report)
    : _application(application), _configuration(std::move(configuration)), _report(report) {}

void SmokeWalk::run() {
  ++_report.configurations;
  _application.writesSince(_writesCursor);
  _application.open();
  settle();
  answerCrash({}, "opening");
  takeWrites("opening", {});
  const std::string first = TreeQuery::text(*query().page().node, "title");
  visitPage(first, 0);
  // The application's own list below, and back to the bundle's page.
  _application.perform({{"action", "back"}, {"node", query().outerNavigation().id}});
  const FoundNode row = query().row({RowAddress::By::identifier, "Bundle", 1, 0, 0});
  if (!row || !tap(row.id, "Settings")) {
    find("Settings", "the row that opens the bundle does not");
  }
  settle();
  answerCrash({}, "Settings");
  takeWrites("Settings", {});
}

void SmokeWalk::visitPage(const std::string& place, int depth) {
  ++_report.pages;
  const FoundNode page = query().page();
  if (!page) return find(place, "there is no page");
  if (const auto text = noteProblem(page, place); !text.empty()) _report.brokenPages.insert(text);
  std::vector<std::string> rows;
  for (const FoundNode& row : query().rows()) rows.push_back(row.id);
  bringIntoSight(rows, place);
  for (const FoundNode& row : query().rows()) {
    noteProblem(row, place + ", row " + nameOf(*row.node));
  }
  if (isPageOfChoices(query().page())) return;
  for (const std::string& row : rows) visitRow(row, place, depth);
}

// Scrolls screen by screen, so that every row gets its cell.
void SmokeWalk::bringIntoSight(const std::vector<std::string>& rows, const std::string& place) {
  constexpr std::size_t rowsOfAScreen = 8;
  for (std::size_t index = 0; index < rows.size(); ++index) {
    ++_report.rows;
    if (index % rowsOfAScreen != 0 && index + 1 != rows.size()) continue;
    _application.reveal(rows[index]);
    answerCrash({}, place + ", scrolling");
  }
}

void SmokeWalk::visitRow(const std::string& row, const std::string& place, int depth) {
  const FoundNode shown = query().find(row);
  if (!shown) return;  // removed by a change of another row
  const std::string here = place + ", row " + nameOf(*shown.node);
  const std::string page = query().page().id;
  const bool opens = shown.node->value("selectable", false);
  if (opens && depth < deepestPage && tap(row, here)) lookAround(page, row, here, depth);
}

bool SmokeWalk::tap(const std::string& row, const std::string& place) {
  if (const ActionResult shown = _application.reveal(row); !shown) {
    find(place, shown.message);
    return false;
  }
  const ActionResult tapped = _application.perform({{"action", "tap"}, {"node", row}});
  if (!tapped && !_application.crash()) find(place, tapped.message);
  settle();
  return static_cast<bool>(tapped);
}

void SmokeWalk::settle() {
  if (_application.crash()) return;
  _application.advance(settleSeconds);
  _application.runBackground(std::nullopt);
  _application.advance(settleSeconds);
}

void SmokeWalk::lookAround(const std::string& page, const std::string& row,
                           const std::string& place, int depth) {
  if (!_application.crash() && mustRaise(row)) find(place, "raised no exception, but must");
  answerCrash(row, place);
  takeWrites(place, {});
  if (query().presented()) visitSheet(row, place, depth);
  const FoundNode top = query().page();
  if (!top || top.id == page) return;
  visitPage(place, depth + 1);
  _application.perform({{"action", "back"}, {"node", query().outerNavigation().id}});
  settle();
  answerCrash({}, place + ", going back");
  takeWrites(place + ", going back", {});
  const FoundNode back = query().page();
  if (!back || back.id != page) find(place, "going back leads to another page");
}

void SmokeWalk::visitSheet(const std::string& row, const std::string& place, int depth) {
  ++_report.sheets;
  const FoundNode sheet = query().presented();
  const std::string kind = TreeQuery::text(*sheet.node, "kind");
  if (kind == "alert") return visitChoices(sheet.id, row, place, depth);
  const bool writes = kind == "colorPicker";
  closeSheet(place);
  const std::string reason =
      writes ? "closing the colour picker writes the preference file" : std::string();
  if (takeWrites(place, reason) == 0 && writes)
    find(place, "the closed colour picker wrote nothing");
}

void SmokeWalk::closeSheet(const std::string& place) {
  const FoundNode sheet = query().presented();
  const ActionResult closed = _application.perform({{"action", "close"}, {"node", sheet.id}});
  if (!closed && !_application.crash())
    find(place, "the sheet cannot be closed: " + closed.message);
  settle();
  answerCrash({}, place + ", closing the sheet");
}

// Visits each choice but the cancelling one, which comes last. Reopens the sheet for each.
void SmokeWalk::visitChoices(const std::string& sheet, const std::string& row,
                             const std::string& place, int depth) {
  const nlohmann::json actions =
      query().find(sheet).node->value("actions", nlohmann::json::array());
  const std::string page = query().page().id;
  for (std::size_t index = 0; index < actions.size(); ++index) {
    if (actions[index].value("style", "") == "cancel") continue;
    const FoundNode open = query().presented();
    if (!open || TreeQuery::text(*open.node, "kind") != "alert") return;
    const std::string title = TreeQuery::text(actions[index], "title");
    std::string here = place;
    here.append(", choice \"").append(title).append("\"");
    _application.perform({{"action", "choose"}, {"node", open.id}, {"index", index}});
    settle();
    answerCrash({}, here);
    takeWrites(here, "the choice \"" + title + "\" writes the preference file");
    if (query().presented()) visitSheet(row, here, depth);
    const FoundNode top = query().page();
    if (top && top.id != page) lookAround(page, row, here, depth);
    if (!tap(row, place)) return;
  }
  if (query().presented()) closeSheet(place);
}

bool SmokeWalk::mustRaise(const std::string& row) {
  const nlohmann::json specifier = row.empty() ? nlohmann::json() : _application.inspectRow(row);
  return specifier.is_object() && specifier.contains("action") &&
         specifier["action"] == raisingAction;
}

void SmokeWalk::answerCrash(const std::string& row, const std::string& place) {
  const auto crash = _application.crash();
  if (!crash) return;
  const bool isExpected = mustRaise(row) && crash->name == raisedName &&
                          crash->reason.find(raisedSelector) != std::string::npos;
  const std::string text = crash->name + ": " + crash->reason;
  if (isExpected) {
    _report.expected.insert(std::string(raisingAction) + " raises " + raisedName + " for " +
                            raisedSelector);
  } else {
    find(place, "raised " + text);
  }
  _application.perform({{"action", "continue"}, {"node", query().presented().id}});
}

std::string SmokeWalk::noteProblem(const FoundNode& node, const std::string& place) {
  const auto problem = node.node->find("problem");
  if (problem == node.node->end()) return {};
  std::string text =
      problem->is_string() ? problem->get<std::string>() : TreeQuery::text(*problem, "text");
  find(place, text);
  return text;
}

std::size_t SmokeWalk::takeWrites(const std::string& place, const std::string& reason) {
  const auto writes = _application.writesSince(_writesCursor);
  for (const auto& write : writes) {
    if (reason.empty()) {
      find(place, "wrote " + write.path);
    } else {
      _report.expected.insert(reason);
      _expectedWrites.insert(write.path);
    }
  }
  return writes.size();
}

void SmokeWalk::find(const std::string& place, const std::string& what) {
  _report.findings.push_back({_configuration, place, what});
}

}  // namespace settings
