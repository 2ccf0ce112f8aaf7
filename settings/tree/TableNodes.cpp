#include "settings/tree/TableNodes.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/preferences/PSListController.h"
#include "platform/preferences/PSTableCell.h"
#include "platform/uikit/tables/UITableView.h"
#include "platform/uikit/views/UILongPressGestureRecognizer.h"
#include "settings/tree/NodeWriter.h"

namespace settings {

using nlohmann::json;
using platform::IndexPath;
using platform::UITableView;
using platform::UITableViewCell;
using platform::UITableViewCellAccessoryType;
using platform::UITableViewCellEditingStyle;
using platform::UITableViewCellStyle;
using platform::UITableViewStyle;

namespace {

using Table = std::shared_ptr<UITableView>;

std::string_view styleName(UITableViewStyle style) {
  switch (style) {
    case UITableViewStyle::plain:
      return "plain";
    case UITableViewStyle::grouped:
      return "grouped";
    case UITableViewStyle::insetGrouped:
      return "insetGrouped";
  }
  return "plain";
}

std::string_view styleName(UITableViewCellStyle style) {
  switch (style) {
    case UITableViewCellStyle::standard:
      return "default";
    case UITableViewCellStyle::value1:
      return "value1";
    case UITableViewCellStyle::value2:
      return "value2";
    case UITableViewCellStyle::subtitle:
      return "subtitle";
  }
  return "default";
}

std::string_view accessoryName(UITableViewCellAccessoryType type) {
  switch (type) {
    case UITableViewCellAccessoryType::none:
      return "none";
    case UITableViewCellAccessoryType::checkmark:
      return "checkmark";
    case UITableViewCellAccessoryType::disclosureIndicator:
      return "disclosure";
    case UITableViewCellAccessoryType::detailDisclosureButton:
    case UITableViewCellAccessoryType::detailButton:
      return "detail";
  }
  return "none";
}

std::string_view editingStyleName(UITableViewCellEditingStyle style) {
  switch (style) {
    case UITableViewCellEditingStyle::none:
      return "none";
    case UITableViewCellEditingStyle::deletion:
      return "delete";
    case UITableViewCellEditingStyle::insertion:
      return "insert";
  }
  return "none";
}

json textJson(const platform::UILabel& label) {
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

// The content view's own children: what the cell's node tells by itself is left out. The standard
// image view is there where other views lie over the picture.
std::string addContent(NodeWriter& writer, const UITableViewCell& cell) {
  const auto& content = cell.contentView();
  std::vector<std::string> children;
  for (const auto& view : content->subviews()) {
    if (view == cell.textLabel() || view == cell.detailTextLabel()) continue;
    const bool isPicture = view == cell.imageView();
    if (isPicture && view->subviews().empty()) continue;
    children.push_back(writer.addView(view, isPicture ? "imageView" : ""));
  }
  json node = writer.viewMembers(*content, "view");
  node["role"] = "content";
  return writer.add(content->nodeIdentifier(), {NodeKind::view, content, 0}, std::move(node),
                    children);
}

std::vector<std::string> addCellChildren(NodeWriter& writer, const UITableViewCell& cell) {
  std::vector<std::string> children{addContent(writer, cell)};
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

// A view takes the place of the accessory that a type names.
UITableViewCellAccessoryType shownAccessory(const UITableViewCell& cell) {
  const auto& view = cell.isEditing() ? cell.editingAccessoryView() : cell.accessoryView();
  if (view) return UITableViewCellAccessoryType::none;
  return cell.isEditing() ? cell.editingAccessoryType() : cell.accessoryType();
}

json cellMembers(NodeWriter& writer, const UITableViewCell& cell) {
  json node = writer.viewMembers(cell, "cell");
  node["style"] = styleName(cell.style());
  if (cell.textLabel() && cell.textLabel()->text()) node["text"] = textJson(*cell.textLabel());
  if (cell.detailTextLabel() && cell.detailTextLabel()->text()) {
    node["detail"] = textJson(*cell.detailTextLabel());
  }
  if (cell.imageView() && cell.imageView()->image()) {
    node["image"] = writer.imageJson(cell.imageView()->image());
  }
  node["accessory"] = accessoryName(shownAccessory(cell));
  if (cell.isSelected() || cell.isHighlighted()) node["selected"] = true;
  return node;
}

std::string addCell(NodeWriter& writer, const std::shared_ptr<UITableViewCell>& cell) {
  json node = cellMembers(writer, *cell);
  const auto list = std::dynamic_pointer_cast<platform::PSTableCell>(cell);
  if (list) {
    if (!list->cellEnabled()) node["enabled"] = false;
    node["cellType"] = platform::nameOfCellType(list->cellType());
  }
  auto children = addCellChildren(writer, *cell);
  return writer.add(cell->nodeIdentifier(), {NodeKind::view, cell, 0}, std::move(node), children);
}

void addSpecifierMembers(const platform::PSSpecifier& specifier, json& node) {
  if (const auto identifier = specifier.identifier()) node["identifier"] = *identifier;
  if (const auto problem = specifier.problem()) node["problem"] = *problem;
}

// A specifier's, or the text that the data source knows the row by.
void addIdentifier(const Table& table, IndexPath path, json& node) {
  if (const auto specifier = specifierOfRow(table, path)) {
    addSpecifierMembers(*specifier, node);
  } else if (const auto source = table->dataSource()) {
    const auto text = source->identityForRowAtIndexPath(table, path).text();
    if (text) node["identifier"] = *text;
  }
}

std::string addRow(NodeWriter& writer, const Table& table, IndexPath path) {
  const auto cell = table->cellForRowAtIndexPath(path);
  json node{{"kind", "row"},
            {"section", path.section},
            {"index", path.row},
            {"height", table->heightOfRow(path)},
            {"title", titleOfRow(table, path)},
            {"visible", cell != nullptr},
            {"selectable", table->canUserSelectRow(path)}};
  if (const auto problem = table->rowProblem(path)) node["problem"] = *problem;
  addIdentifier(table, path, node);
  if (table->isEditing()) {
    node["editing"] = {{"style", editingStyleName(table->editingStyleForRow(path))},
                       {"movable", table->canMoveRow(path)}};
  }
  std::vector<std::string> children;
  if (cell) children.push_back(addCell(writer, cell));
  const std::uint64_t token = table->rowToken(path);
  return writer.add(token, {NodeKind::row, table, token}, std::move(node), children);
}

std::string addSection(NodeWriter& writer, const Table& table, std::int64_t section) {
  json node{{"kind", "section"}, {"index", section}};
  if (const auto header = table->headerTitle(section)) node["header"] = *header;
  if (const auto footer = table->footerTitle(section)) node["footer"] = *footer;
  if (const auto list =
          std::dynamic_pointer_cast<platform::PSListController>(table->dataSource())) {
    const auto group = list->groupForSection(section);
    if (group) addSpecifierMembers(*group, node);
  }
  std::vector<std::string> children;
  const std::int64_t rows = table->numberOfRowsInSection(section);
  if (rows > 0) node["rowsTop"] = table->rectForRowAtIndexPath({section, 0}).y;
  for (std::int64_t row = 0; row < rows; ++row) {
    children.push_back(addRow(writer, table, {section, row}));
  }
  const std::uint64_t token = table->sectionToken(section);
  return writer.add(token, {NodeKind::section, table, token}, std::move(node), children);
}

bool watchesLongPresses(const UITableView& table) {
  return std::ranges::any_of(table.gestureRecognizers(), [](const auto& recognizer) {
    return recognizer->isEnabled() &&
           std::dynamic_pointer_cast<platform::UILongPressGestureRecognizer>(recognizer) != nullptr;
  });
}

}  // namespace

std::shared_ptr<platform::PSSpecifier> specifierOfRow(const Table& table, IndexPath path) {
  const auto source = table->dataSource();
  if (!source || !table->hasRow(path)) return nullptr;
  return source->identityForRowAtIndexPath(table, path).as<platform::PSSpecifier>();
}

std::string titleOfRow(const Table& table, IndexPath path) {
  if (const auto specifier = specifierOfRow(table, path)) {
    if (const auto name = specifier->name()) return *name;
    // Some cells show the text of this property in place of a name.
    if (const auto title = specifier->propertyForKey("title").text()) return *title;
  }
  const auto cell = table->cellForRowAtIndexPath(path);
  return cell && cell->textLabel() ? cell->textLabel()->text().value_or("") : std::string();
}

std::string addTable(NodeWriter& writer, const Table& table) {
  json node = writer.viewMembers(*table, "table");
  node["style"] = styleName(table->style());
  node["editing"] = table->isEditing();
  if (watchesLongPresses(*table)) node["pressable"] = true;
  node["offset"] = table->contentOffset().y;
  std::vector<std::string> children;
  if (table->tableHeaderView())
    children.push_back(writer.addView(table->tableHeaderView(), "header"));
  const std::int64_t sections = table->numberOfSections();
  for (std::int64_t section = 0; section < sections; ++section) {
    children.push_back(addSection(writer, table, section));
  }
  if (table->tableFooterView())
    children.push_back(writer.addView(table->tableFooterView(), "footer"));
  node["contentHeight"] = table->contentSize().height;
  return writer.add(table->nodeIdentifier(), {NodeKind::table, table, 0}, std::move(node),
                    children);
}

}  // namespace settings
