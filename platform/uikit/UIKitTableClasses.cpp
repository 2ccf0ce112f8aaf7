#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/uikit/UIKitClassTables.h"
#include "platform/uikit/tables/UITableView.h"
#include "platform/uikit/tables/UITableViewCell.h"

namespace platform {
namespace {

Class cellClass() {
  ClassBuilder<UITableViewCell> builder("UIView");
  builder.property("textLabel", &UITableViewCell::textLabel)
      .property("detailTextLabel", &UITableViewCell::detailTextLabel)
      .property("imageView", &UITableViewCell::imageView)
      .property("contentView", &UITableViewCell::contentView)
      .key("reuseIdentifier", &UITableViewCell::reuseIdentifier)
      .operation("prepareForReuse", &UITableViewCell::prepareForReuse)
      .operation("_disclosureChevronImage", &UITableViewCell::disclosureChevronImage)
      .property("accessoryView", &UITableViewCell::accessoryView,
                &UITableViewCell::setAccessoryView)
      .property("editingAccessoryView", &UITableViewCell::editingAccessoryView,
                &UITableViewCell::setEditingAccessoryView)
      .property("accessoryType", &UITableViewCell::accessoryType,
                &UITableViewCell::setAccessoryType)
      .property("editingAccessoryType", &UITableViewCell::editingAccessoryType,
                &UITableViewCell::setEditingAccessoryType)
      .property("selectionStyle", &UITableViewCell::selectionStyle,
                &UITableViewCell::setSelectionStyle)
      .key("selected", &UITableViewCell::isSelected)
      .operation("setSelected:animated:", &UITableViewCell::setSelected)
      .key("highlighted", &UITableViewCell::isHighlighted)
      .operation("setHighlighted:animated:", &UITableViewCell::setHighlighted);
  return builder.build();
}

}  // namespace

void registerTableClasses(ClassRegistry& registry) {
  registry.add(cellClass());
  registry.add(ClassBuilder<UITableView>("UIScrollView")
                   .property("_scrollView", &UITableView::scrollView)
                   .operation("reloadData", &UITableView::reloadData)
                   .operation("setDataSource:", &UITableView::setDataSourceObject)
                   .operation("numberOfSections", &UITableView::numberOfSections)
                   .operation("numberOfRowsInSection:", &UITableView::numberOfRowsInSection)
                   .operation("beginUpdates", &UITableView::beginUpdates)
                   .operation("endUpdates", &UITableView::endUpdates)
                   .key("editing", &UITableView::isEditing)
                   .operation("setEditing:animated:", &UITableView::setEditing)
                   .property("allowsSelection", &UITableView::allowsSelection,
                             &UITableView::setAllowsSelection)
                   .property("allowsSelectionDuringEditing",
                             &UITableView::allowsSelectionDuringEditing,
                             &UITableView::setAllowsSelectionDuringEditing)
                   .property("rowHeight", &UITableView::rowHeight, &UITableView::setRowHeight)
                   .property("tableHeaderView", &UITableView::tableHeaderView,
                             &UITableView::setTableHeaderView)
                   .property("tableFooterView", &UITableView::tableFooterView,
                             &UITableView::setTableFooterView)
                   .build());
}

}  // namespace platform
