#pragma once

#include <memory>
#include <string>

#include "platform/uikit/controllers/UIViewController.h"
#include "platform/uikit/tables/UITableView.h"

namespace zentrova {

// What the two pages with a table in permanent editing mode have in common.

inline constexpr std::string_view moduleCellIdentifier = "moduleCell";

// Background, title and large titles, in this order.
void prepareEditingPage(platform::UIViewController& page, const std::string& title);

enum class SelectionDuringEditing : bool { no, yes };

// A grouped table that is always being edited. The page fills it by being its data source and
// delegate, and shows it with showEditingTable.
std::shared_ptr<platform::UITableView> makeEditingTable(
    const std::shared_ptr<platform::UITableViewDataSource>& dataSource,
    const std::shared_ptr<platform::UITableViewDelegate>& delegate,
    SelectionDuringEditing selection);

// Adds the table to the page's view and pins its four edges to the view's.
void showEditingTable(platform::UIViewController& page,
                      const std::shared_ptr<platform::UITableView>& table);

}  // namespace zentrova
