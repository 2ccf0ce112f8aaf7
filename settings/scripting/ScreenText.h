#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace settings {

class TreeQuery;

// What is on the screen, as text: the title, each section with its header, rows and footer, and
// what is presented over it.
std::string screenText(const TreeQuery& query);

// A record of a program in one line: path, arguments, environment, exit.
std::string programText(const nlohmann::json& record);

}  // namespace settings
