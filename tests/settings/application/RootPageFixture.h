#pragma once

#include <string>
#include <string_view>

#include "tests/settings/application/ApplicationFixture.h"

namespace settings::test {

// Shared by the tests of the root page and of its sub-pages.
class RootPageTest : public ApplicationTest {
 protected:
  using Json = nlohmann::json;

  TreeQuery query() { return TreeQuery(application().tree()); }
  std::string title() { return page().value("title", "no page"); }
  bool hasRow(const std::string& identifier) {
    return static_cast<bool>(query().row({RowAddress::By::identifier, identifier, 1, 0, 0}));
  }
  ActionResult back() { return act({{"action", "back"}}, query().outerNavigation().id); }
  // The view below the rows of the page's table; null if there is none.
  Json footer() {
    for (const FoundNode& child : query().children(query().table())) {
      if (child.node->value("role", "") == "footer") return *child.node;
    }
    return nullptr;
  }
  // Replaces a program of the device with a shell script.
  void putProgram(std::string_view path, std::string_view script) {
    application().device().createDirectory(path.substr(0, path.rfind('/')));
    put(path, "#!/bin/sh\n" + std::string(script));
    EXPECT_FALSE(application().device().setMode(path, 0755)) << path;
  }
};

}  // namespace settings::test
