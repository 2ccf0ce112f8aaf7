#pragma once

#include <memory>
#include <string>

#include "platform/uikit/tables/NSIndexPath.h"

namespace platform {
class PSSpecifier;
class UITableView;
}  // namespace platform

namespace settings {

class NodeWriter;

// Adds a table with its header, sections, rows, cells and footer; gives the table's identity.
std::string addTable(NodeWriter& writer, const std::shared_ptr<platform::UITableView>& table);

// The specifier behind a row; empty where the table is no list of specifiers.
std::shared_ptr<platform::PSSpecifier> specifierOfRow(
    const std::shared_ptr<platform::UITableView>& table, platform::IndexPath path);

// What a row is called, for people and scripts.
std::string titleOfRow(const std::shared_ptr<platform::UITableView>& table,
                       platform::IndexPath path);

}  // namespace settings
