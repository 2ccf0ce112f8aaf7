#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace settings {

class TreeQuery;

// The content of the screen as text: the title, each section with its header, rows and footer, and
// what is presented over the page.
std::string screenText(const TreeQuery& query);

// One line for a started program: path, arguments, environment, exit status.
std::string programText(const nlohmann::json& record);

}  // namespace settings
