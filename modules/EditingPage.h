#pragma once

#include <memory>
#include <string>

#include "platform/uikit/controllers/UIViewController.h"
#include "platform/uikit/tables/UITableView.h"

namespace zentrova {

// Shared by the two pages whose table is always in editing mode.

inline constexpr std::string_view moduleCellIdentifier = "moduleCell";

// Sets background, title and large titles, in this order.
void prepareEditingPage(platform::UIViewController& page, const std::string& title);

enum class SelectionDuringEditing : bool { no, yes };

// Makes a grouped table in permanent editing mode. The page is its data source and delegate, and
// shows it with showEditingTable.
std::shared_ptr<platform::UITableView> makeEditingTable(
    const std::shared_ptr<platform::UITableViewDataSource>& dataSource,
    const std::shared_ptr<platform::UITableViewDelegate>& delegate,
    SelectionDuringEditing selection);

// Adds the table to the page's view and pins its four edges to those of the view.
void showEditingTable(platform::UIViewController& page,
                      const std::shared_ptr<platform::UITableView>& table);

}  // namespace zentrova
