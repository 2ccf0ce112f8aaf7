#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/propertylist/PropertyList.h"
#include "settings/application/Application.h"
#include "settings/device/BundleInstallation.h"
#include "settings/device/DevicePaths.h"
#include "settings/device/DeviceTree.h"
#include "settings/device/Product.h"
#include "settings/device/PropertyListJson.h"
#include "settings/device/TreeWriter.h"
#include "settings/scripting/ScriptRunner.h"
#include "settings/scripting/TreeQuery.h"
#include "tests/settings/web/TemporaryPage.h"

namespace settings::test {

// The result of a script.
struct Played {
  ScriptStatus status = ScriptStatus::done;
  std::string output;
  std::string messages;
};

// The Settings application on a new device that contains only the built bundle. A test that needs
// photos, modules or programs creates the whole tree.
class ApplicationTest : public testing::Test {
 protected:
  ApplicationTest() {
    TreeWriter writer(root());
    writer.folder("/private/jb");
    writer.link("/var/jb", "../private/jb");
    writer.folder(preferencesPath);
    writer.copy(bundlePath, findBuiltBundle());
    EXPECT_EQ(writer.problem(), "");
  }

  // The folder of this machine that acts as "/".
  std::string root() const { return folder.in("device"); }
  // Adds everything that a new device contains.
  void useWholeDevice() {
    std::filesystem::remove_all(root());
    const DeviceTreeResult made = DeviceTree::create(root());
    ASSERT_TRUE(made) << made.problem;
  }
  // Creates the application. `open` also does so if there is none yet.
  Application& application() {
    if (!_application) {
      options.deviceRoot = root();
      ApplicationResult made = Application::create(options);
      EXPECT_TRUE(made.application) << made.error;
      _application = std::move(made.application);
    }
    return *_application;
  }
  void open() { application().open(); }
  void dropApplication() { _application.reset(); }

  nlohmann::json tree() { return application().tree(); }
  // The node of a row by identifier; fails the test if there is none.
  nlohmann::json row(const std::string& identifier) { return node(rowNode(identifier)); }
  std::string rowNode(const std::string& identifier) {
    const TreeQuery query(application().tree());
    const FoundNode found = query.row({RowAddress::By::identifier, identifier, 1, 0, 0});
    EXPECT_TRUE(found) << "no row " << identifier << " among " << query.rowNames();
    return found.id;
  }
  // Scrolls to the row and returns the identity of its control.
  std::string controlNode(const std::string& identifier) {
    const std::string id = rowNode(identifier);
    EXPECT_TRUE(application().reveal(id).accepted);
    const TreeQuery query(application().tree());
    const FoundNode found = query.control(query.find(id));
    EXPECT_TRUE(found) << "no control in the row " << identifier;
    return found.id;
  }
  nlohmann::json node(const std::string& id) {
    const nlohmann::json& nodes = application().tree()["nodes"];
    return nodes.contains(id) ? nodes[id] : nlohmann::json::object();
  }
  nlohmann::json shownValue(const std::string& identifier) {
    const std::string id = rowNode(identifier);
    EXPECT_TRUE(application().reveal(id).accepted);
    const TreeQuery query(application().tree());
    return query.shownValue(query.find(id));
  }
  // The page on top, and what is presented over the pages; empty objects if there is none.
  nlohmann::json page() { return found(TreeQuery(application().tree()).page()); }
  nlohmann::json presented() { return found(TreeQuery(application().tree()).presented()); }
  std::string presentedNode() { return TreeQuery(application().tree()).presented().id; }
  // The titles of the rows, in order.
  std::vector<std::string> rowTitles() {
    std::vector<std::string> titles;
    const TreeQuery query(application().tree());
    for (const FoundNode& each : query.rows()) titles.push_back((*each.node)["title"]);
    return titles;
  }

  std::string preferences() { return contents(productPreferencesPath); }
  nlohmann::json preferenceEntries() { return application().filePane()["entries"]; }

  ActionResult act(nlohmann::json action, const std::string& node) {
    action["node"] = node;
    return application().perform(action);
  }
  ActionResult tap(const std::string& identifier) {
    const std::string id = rowNode(identifier);
    EXPECT_TRUE(application().reveal(id).accepted);
    return act({{"action", "tap"}}, id);
  }

  void scrollTo(double offset) {
    const std::string table = TreeQuery(application().tree()).table().id;
    EXPECT_TRUE(act({{"action", "scroll"}, {"offset", offset}}, table).accepted);
  }

  Played play(const std::string& script, const ScriptOptions& scriptOptions = {}) {
    std::istringstream lines(script);
    std::ostringstream output;
    std::ostringstream messages;
    ScriptRunner runner(application(), output, messages, scriptOptions);
    const ScriptStatus status = runner.run(lines);
    return {status, output.str(), messages.str()};
  }

  // Files of the device, by device path.
  void put(std::string_view path, std::string_view bytes) {
    const auto error = application().device().writeAtomically(path, bytes);
    EXPECT_FALSE(error) << error.message;
  }
  std::string contents(std::string_view path) { return application().device().read(path).bytes; }
  // Makes the root page show these rows instead of the product's. Call it before the page is
  // opened.
  void useRows(const nlohmann::json& items) {
    const PropertyListFromJson list =
        valueFromJson(nlohmann::json{{"title", "Rows"}, {"items", items}});
    EXPECT_EQ(list.error, std::nullopt);
    const platform::PropertyListText xml = platform::writeXmlPropertyList(list.value);
    EXPECT_EQ(xml.error, std::nullopt);
    put(inBundle("Root.plist"), xml.bytes);
  }
  static std::string inBundle(std::string_view name) {
    return std::string(bundlePath) + "/" + std::string(name);
  }
  static std::string propertyList(std::string_view inside) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" +
           std::string(inside) + "</plist>\n";
  }

  TemporaryFolder folder;
  ApplicationOptions options;  // change before the application is created

 private:
  static nlohmann::json found(const FoundNode& each) {
    return each ? *each.node : nlohmann::json::object();
  }

  std::unique_ptr<Application> _application;
};

}  // namespace settings::test
