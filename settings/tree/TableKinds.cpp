#include "settings/tree/TableKinds.h"

#include <algorithm>

#include "platform/preferences/PSListController.h"
#include "platform/preferences/PSTableCell.h"
#include "platform/uikit/tables/UITableView.h"
#include "platform/uikit/views/UILongPressGestureRecognizer.h"
#include "settings/tree/HandTools.h"
#include "settings/tree/KindBuilder.h"

namespace settings {

using nlohmann::json;
using platform::IndexPath;
using platform::PSSpecifier;
using platform::PSTableCell;
using platform::UILabel;
using platform::UITableView;
using platform::UITableViewCell;
using platform::UITableViewCellAccessoryType;
using platform::UITableViewCellEditingStyle;
using platform::UITableViewCellStyle;
using platform::UITableViewStyle;

namespace {

using Table = std::shared_ptr<UITableView>;
using Specifier = std::shared_ptr<PSSpecifier>;

enum class PressPhase : std::uint8_t { begin, end, cancel };

constexpr std::array tableStyles{Named{UITableViewStyle::plain, "plain"},
                                 Named{UITableViewStyle::grouped, "grouped"},
                                 Named{UITableViewStyle::insetGrouped, "insetGrouped"}};
constexpr std::array cellStyles{Named{UITableViewCellStyle::standard, "default"},
                                Named{UITableViewCellStyle::value1, "value1"},
                                Named{UITableViewCellStyle::value2, "value2"},
                                Named{UITableViewCellStyle::subtitle, "subtitle"}};
constexpr std::array accessories{
    Named{UITableViewCellAccessoryType::none, "none"},
    Named{UITableViewCellAccessoryType::checkmark, "checkmark"},
    Named{UITableViewCellAccessoryType::disclosureIndicator, "disclosure"},
    Named{UITableViewCellAccessoryType::detailButton, "detail"},
    Named{UITableViewCellAccessoryType::detailDisclosureButton, "detail"}};
constexpr std::array editingStyles{Named{UITableViewCellEditingStyle::none, "none"},
                                   Named{UITableViewCellEditingStyle::deletion, "delete"},
                                   Named{UITableViewCellEditingStyle::insertion, "insert"}};
constexpr std::array pressPhases{Named{PressPhase::begin, "begin"}, Named{PressPhase::end, "end"},
                                 Named{PressPhase::cancel, "cancel"}};

// --- table ---

bool watchesLongPresses(const UITableView& table) {
  return std::ranges::any_of(table.gestureRecognizers(), [](const auto& recognizer) {
    return recognizer->isEnabled() &&
           std::dynamic_pointer_cast<platform::UILongPressGestureRecognizer>(recognizer) != nullptr;
  });
}

// A section of a table, as it is written.
struct SectionPlace {
  Table table;
  std::int64_t section = 0;
};

NodeIdentities addTableParts(NodeWriter& writer, UITableView& view) {
  const auto table = std::static_pointer_cast<UITableView>(view.shared_from_this());
  NodeIdentities children;
  if (view.tableHeaderView()) children.push_back(writer.addView(view.tableHeaderView(), "header"));
  const std::int64_t sections = view.numberOfSections();
  for (SectionPlace place{table, 0}; place.section < sections; ++place.section) {
    children.push_back(writer.addPart("section", place, view.sectionToken(place.section), table));
  }
  if (view.tableFooterView()) children.push_back(writer.addView(view.tableFooterView(), "footer"));
  return children;
}

// A presenter may show more rows than lie in the table's bounds, as its texts are of another
// height.
void setOverscan(UITableView& table, double points) {
  constexpr double mostScreens = 2;
  table.setOverscan(std::clamp(points, 0.0, mostScreens * table.bounds().height));
}

// A hand can pull a table past its ends, but no further than a screen.
ActionResult scroll(UITableView& table, double offset, const std::optional<double>& overscan) {
  if (overscan) setOverscan(table, *overscan);
  const double height = table.bounds().height;
  const double end = std::max(0.0, table.contentSize().height - height);
  table.setContentOffset({table.contentOffset().x, std::clamp(offset, -height, end + height)});
  return {};
}

NodeKind tableKind() {
  return KindBuilder<UITableView>("table")
      .choice("style", &UITableView::style, tableStyles)
      .member("editing", &UITableView::isEditing)
      .optional("pressable", &watchesLongPresses, false)
      .member("offset", [](const UITableView& table) { return table.contentOffset().y; })
      .member("contentHeight", [](const UITableView& table) { return table.contentSize().height; })
      .children(&addTableParts)
      .action("scroll", &scroll, Argument<double>{"offset"},
              UncheckedArgument<double>{"overscan", true})
      .build();
}

// --- section ---

Specifier groupOf(const SectionPlace& place) {
  const auto list =
      std::dynamic_pointer_cast<platform::PSListController>(place.table->dataSource());
  return list ? list->groupForSection(place.section) : nullptr;
}

std::optional<std::string> identifierOfGroup(const SectionPlace& place) {
  const auto group = groupOf(place);
  return group ? group->identifier() : std::nullopt;
}

std::optional<std::string> problemOfGroup(const SectionPlace& place) {
  const auto group = groupOf(place);
  return group ? group->problem() : std::nullopt;
}

// Where the first row begins.
std::optional<double> rowsTop(const SectionPlace& place) {
  if (place.table->numberOfRowsInSection(place.section) <= 0) return std::nullopt;
  return place.table->rectForRowAtIndexPath({place.section, 0}).y;
}

NodeIdentities addRows(NodeWriter& writer, const SectionPlace& place) {
  NodeIdentities children;
  const std::int64_t rows = place.table->numberOfRowsInSection(place.section);
  for (IndexPath path{place.section, 0}; path.row < rows; ++path.row) {
    RowPlace row = RowPlace::at(place.table, path);
    children.push_back(writer.addPart("row", row, place.table->rowToken(path), place.table));
  }
  return children;
}

NodeKind sectionKind() {
  using Place = SectionPlace;
  return KindBuilder<Place>("section")
      .member("index", &Place::section)
      .optional("header",
                [](const Place& place) { return place.table->headerTitle(place.section); })
      .optional("footer",
                [](const Place& place) { return place.table->footerTitle(place.section); })
      .optional("identifier", &identifierOfGroup)
      .optional("problem", &problemOfGroup)
      .optional("rowsTop", &rowsTop)
      .children(&addRows)
      .build();
}

// --- row ---

// What a row is called, for people and scripts.
std::string titleOfRow(const RowPlace& row) {
  if (const auto specifier = row.identity.as<PSSpecifier>()) {
    if (const auto name = specifier->name()) return *name;
    // Some cells show the text of this property in place of a name.
    if (const auto title = specifier->propertyForKey("title").text()) return *title;
  }
  const auto label = row.cell ? row.cell->textLabel() : nullptr;
  return label ? label->text().value_or("") : std::string();
}

std::optional<std::string> identifierOfRow(const RowPlace& row) {
  const auto specifier = row.identity.as<PSSpecifier>();
  return specifier ? specifier->identifier() : row.identity.text();
}

// The specifier's, else why there is no cell.
std::optional<std::string> problemOfRow(const RowPlace& row) {
  const auto specifier = row.identity.as<PSSpecifier>();
  const auto problem = specifier ? specifier->problem() : std::nullopt;
  return problem ? problem : row.table->rowProblem(row.path);
}

std::optional<json> editingJson(const RowPlace& row) {
  if (!row.table->isEditing()) return std::nullopt;
  return json{{"style", nameOf(editingStyles, row.table->editingStyleForRow(row.path))},
              {"movable", row.table->canMoveRow(row.path)}};
}

NodeIdentities addCell(NodeWriter& writer, const RowPlace& row) {
  if (!row.cell) return {};
  return {writer.addViewAs("cell", row.cell)};
}

ActionResult tap(const RowPlace& row) {
  if (!row.cell) return refused("the row is out of sight");
  return accepted(row.table->userTapRow(row.path), "the row takes no tap");
}

ActionResult press(const RowPlace& row, HandTools& tools, PressPhase phase) {
  if (phase == PressPhase::begin) {
    if (!row.cell) return refused("the row is out of sight");
    tools.finger.press(row.cell);
    return {};
  }
  if (!tools.finger.isDown()) return refused("no finger is down");
  if (phase == PressPhase::cancel) {
    tools.finger.cancel();
  } else if (!tools.finger.lift()) {
    row.table->userTapRow(row.path);  // a press that nobody recognised is a slow tap
  }
  return {};
}

ActionResult commit(const RowPlace& row) {
  return accepted(row.table->userCommitRow(row.path),
                  "the row has no insert or delete control just now");
}

ActionResult move(const RowPlace& row, const std::optional<std::int64_t>& section,
                  const std::optional<std::int64_t>& index) {
  if (!section || !index) return refused("\"section\" and \"index\" must be whole numbers");
  return accepted(row.table->userMoveRow(row.path, {*section, *index}),
                  "the row cannot be moved there");
}

NodeKind rowKind() {
  using Row = RowPlace;
  return KindBuilder<Row>("row")
      .member("section", [](const Row& row) { return row.path.section; })
      .member("index", [](const Row& row) { return row.path.row; })
      .member("height", [](const Row& row) { return row.table->heightOfRow(row.path); })
      .member("title", &titleOfRow)
      .member("visible", [](const Row& row) { return row.cell != nullptr; })
      .member("selectable", [](const Row& row) { return row.table->canUserSelectRow(row.path); })
      .optional("problem", &problemOfRow)
      .optional("identifier", &identifierOfRow)
      .map("editing", &editingJson)
      .children(&addCell)
      .action("tap", &tap)
      .action("press", &press, ChoiceArgument{"phase", pressPhases})
      .action("commit", &commit)
      .action("move", &move, UncheckedArgument<std::int64_t>{"section"},
              UncheckedArgument<std::int64_t>{"index"})
      .build();
}

// --- cell ---

json textJson(const UILabel& label) {
  json text{{"string", *label.text()},
            {"color", colorJson(*label.textColor())},
            {"lines", label.numberOfLines()},
            {"size", label.font()->pointSize()},
            {"weight", platform::fontWeightName(label.font()->weight())}};
  if (label.highlightedTextColor()) {
    text["highlightedColor"] = colorJson(*label.highlightedTextColor());
  }
  if (label.alpha() != 1) text["alpha"] = label.alpha();
  return text;
}

std::optional<json> textOf(const UILabel* label) {
  if (!label || !label->text()) return std::nullopt;
  return textJson(*label);
}

std::shared_ptr<platform::UIImage> imageOf(const UITableViewCell& cell) {
  return cell.imageView() ? cell.imageView()->image() : nullptr;
}

// A view takes the place of the accessory that a type names.
UITableViewCellAccessoryType shownAccessory(const UITableViewCell& cell) {
  const auto& view = cell.isEditing() ? cell.editingAccessoryView() : cell.accessoryView();
  if (view) return UITableViewCellAccessoryType::none;
  return cell.isEditing() ? cell.editingAccessoryType() : cell.accessoryType();
}

bool isMarked(const UITableViewCell& cell) {
  return cell.isSelected() || cell.isHighlighted();
}

bool isEnabled(const UITableViewCell& cell) {
  const auto* list = dynamic_cast<const PSTableCell*>(&cell);
  return list == nullptr || list->cellEnabled();
}

std::optional<std::string_view> cellType(const UITableViewCell& cell) {
  const auto* list = dynamic_cast<const PSTableCell*>(&cell);
  if (list == nullptr) return std::nullopt;
  return platform::nameOfCellType(list->cellType());
}

// The content view's own children: what the cell's node tells by itself is left out. The standard
// image view is there where other views lie over the picture.
std::string addContent(NodeWriter& writer, const UITableViewCell& cell) {
  const auto& content = cell.contentView();
  NodeIdentities children;
  for (const auto& view : content->subviews()) {
    if (view == cell.textLabel() || view == cell.detailTextLabel()) continue;
    const bool isPicture = view == cell.imageView();
    if (isPicture && view->subviews().empty()) continue;
    children.push_back(writer.addView(view, isPicture ? "imageView" : ""));
  }
  return writer.addViewAs("view", content, "content", std::move(children));
}

NodeIdentities addCellParts(NodeWriter& writer, const UITableViewCell& cell) {
  NodeIdentities children{addContent(writer, cell)};
  for (const auto& view : cell.subviews()) {
    if (view == cell.contentView() || view == cell.accessoryView() ||
        view == cell.editingAccessoryView()) {
      continue;
    }
    children.push_back(writer.addView(view));
  }
  if (cell.accessoryView()) {
    children.push_back(writer.addView(cell.accessoryView(), "accessoryView"));
  }
  if (cell.editingAccessoryView()) {
    children.push_back(writer.addView(cell.editingAccessoryView(), "editingAccessoryView"));
  }
  return children;
}

NodeKind cellKind() {
  using Cell = UITableViewCell;
  return KindBuilder<Cell>("cell")
      .placedByAnother()
      .choice("style", &Cell::style, cellStyles)
      .map("text", [](const Cell& cell) { return textOf(cell.textLabel().get()); })
      .map("detail", [](const Cell& cell) { return textOf(cell.detailTextLabel().get()); })
      .optional("image", &imageOf)
      .choice("accessory", &shownAccessory, accessories)
      .optional("selected", &isMarked, false)
      .optional("enabled", &isEnabled, true)
      .optional("cellType", &cellType)
      .children(&addCellParts)
      .build();
}

}  // namespace

RowPlace RowPlace::at(const Table& table, IndexPath path) {
  const auto source = table->hasRow(path) ? table->dataSource() : nullptr;
  return {table, path, table->cellForRowAtIndexPath(path),
          source ? source->identityForRowAtIndexPath(table, path) : platform::Value()};
}

std::optional<RowPlace> RowPlace::of(const NodeTarget& target) {
  const auto table = target.kind == "row" ? target.as<UITableView>() : nullptr;
  const auto path = table ? table->indexPathForRowToken(target.token) : std::nullopt;
  if (!path) return std::nullopt;
  return at(table, *path);
}

std::vector<NodeKind> tableKinds() {
  return {tableKind(), sectionKind(), rowKind(), cellKind()};
}

}  // namespace settings
