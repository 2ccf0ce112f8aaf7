// Measures the page of favourites with 10, 100, 1,000 and 10,000 installed modules: a query of the
// available modules, and each user action until presenters have the new tree of nodes.
//
//   zentrova-modules-benchmark [FOLDER]   writes devices to FOLDER (default: current)
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <unistd.h>
#include <vector>

#include "benchmarks/Report.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/values/Collections.h"
#include "settings/application/Application.h"
#include "settings/application/SettingsProcess.h"
#include "settings/device/DevicePaths.h"
#include "settings/device/DeviceTree.h"
#include "settings/device/ProgramFolder.h"
#include "settings/device/TreeWriter.h"
#include "settings/neighbours/ModuleIndex.h"
#include "settings/scripting/TreeQuery.h"

namespace benchmarks {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using platform::Dictionary;
using settings::Application;
using settings::FoundNode;
using settings::RowAddress;
using settings::TreeQuery;

void check(bool holds, const std::string& what) {
  if (holds) return;
  std::fprintf(stderr, "zentrova-modules-benchmark: %s\n", what.c_str());
  std::exit(1);
}

std::string identifierOf(int number) {
  return "org.example.modules.number" + std::to_string(number);
}

// A new device on which the given number of modules replaces the installed ones.
class Device {
 public:
  Device(const fs::path& folder, int modules)
      : _root(folder / ("zentrova-modules-" + std::to_string(getpid()))) {
    const auto made = settings::DeviceTree::create(_root);
    check(static_cast<bool>(made), made.problem);
    fs::remove_all(_root / settings::systemModulesPath.substr(1));
    fs::remove_all(_root / settings::addedModulesPath.substr(1));
    settings::TreeWriter writer(_root);
    for (int number = 0; number < modules; ++number) addModule(writer, number);
    check(!writer.failed(), writer.problem());
  }
  ~Device() { fs::remove_all(_root); }
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;

  std::string root() const { return _root.string(); }

 private:
  static void addModule(settings::TreeWriter& writer, int number) {
    const std::string path =
        std::string(settings::addedModulesPath) + "/Module" + std::to_string(number) + ".bundle";
    writer.propertyList(path + "/Info.plist",
                        Dictionary{{"CFBundleDisplayName", "Module " + std::to_string(number)},
                                   {"CFBundleIdentifier", identifierOf(number)},
                                   {"CFBundlePackageType", "BNDL"}});
    writer.copy(path + "/icon.png",
                settings::sharedFolder("sample/device/System/Library/ControlCenter/Bundles/"
                                       "ScreenRecordingModule.bundle/icon.png"));
  }

  fs::path _root;
};

// The application and its user.
class User {
 public:
  explicit User(const Device& device) {
    settings::ApplicationOptions options;
    options.deviceRoot = device.root();
    auto made = Application::create(options);
    check(static_cast<bool>(made.application), made.error);
    _application = std::move(made.application);
  }

  Application& application() { return *_application; }
  void openRootPage() {
    _application->open();
    _application->tree();
  }
  void openFavorites() { act("tap", rowNamed("favoriteModules")); }
  std::string rowNamed(const std::string& identifier) {
    const TreeQuery query(_application->tree());
    const FoundNode row = query.row({RowAddress::By::identifier, identifier, 1, 0, 0});
    check(static_cast<bool>(row), "there is no row " + identifier);
    return row.id;
  }
  std::string table() { return TreeQuery(_application->tree()).table().id; }
  // Runs the action until presenters have the new tree.
  void act(const char* action, const std::string& node, json members = json::object()) {
    members["action"] = action;
    members["node"] = node;
    const auto result = _application->perform(members);
    check(result.accepted, result.message);
    keep(_application->tree());
  }

 private:
  std::unique_ptr<Application> _application;
};

// An action, with a preparation that is not measured.
struct Act {
  std::string name;
  std::function<void()> prepare;
  std::function<void()> run;
};

void report(const Act& act, int modules, int repetitions) {
  std::vector<double> seconds;
  for (int count = 0; count < repetitions; ++count) {
    act.prepare();
    const double start = now();
    act.run();
    seconds.push_back(now() - start);
  }
  std::sort(seconds.begin(), seconds.end());
  std::printf("  %6d  %-44s best %s  median %s\n", modules, act.name.c_str(),
              inUnits(seconds.front()).c_str(), inUnits(seconds[seconds.size() / 2]).c_str());
  std::fflush(stdout);
}

void measureQueries(User& user, int modules, int repetitions) {
  const auto query = [&user] {
    user.application().runAtEdge("a query", [&] {
      keep(user.application().process()->topPage()->valueForKey("nonGroupedIdentifiers"));
    });
  };
  // A query in the same turn of the main queue gets the cached answer of the repository's stand-in.
  const auto secondQuery = [&user](double& seconds) {
    user.application().runAtEdge("two queries", [&] {
      const auto page = user.application().process()->topPage();
      page->valueForKey("nonGroupedIdentifiers");
      const double start = now();
      keep(page->valueForKey("nonGroupedIdentifiers"));
      seconds = now() - start;
    });
  };
  std::vector<double> seconds(static_cast<std::size_t>(repetitions));
  for (double& each : seconds) secondQuery(each);
  std::sort(seconds.begin(), seconds.end());
  std::printf("  %6d  %-44s best %s  median %s\n", modules, "query, the page's own share",
              inUnits(seconds.front()).c_str(), inUnits(seconds[seconds.size() / 2]).c_str());
  report({"query, with a look at the folders", [] {}, query}, modules, repetitions);
}

void measureEdits(User& user, int modules, int repetitions) {
  const std::string last = user.rowNamed(identifierOf(modules - 1));
  const std::string favourite = user.rowNamed("com.apple.control-center.CameraModule");
  bool isFavourite = false;
  const auto move = [&](const std::string& row, int section, int index) {
    user.act("move", row, {{"section", section}, {"index", index}});
  };
  report({"drag of an available row, refused", [] {}, [&] { move(last, 0, 0); }}, modules,
         repetitions);
  int place = 3;  // of the favourite
  report({"reorder of the favourites, stored", [&] { place = 3 - place; },
          [&] { move(favourite, 0, place); }},
         modules, repetitions);
  user.act("commit", favourite);
  report({"drag over the whole table, stored",
          [&] {
            if (isFavourite) move(last, 1, 0);
            isFavourite = true;
          },
          [&] { move(last, 0, 0); }},
         modules, repetitions);
}

void measureModules(const fs::path& folder, int modules) {
  const Device device(folder, modules);
  User user(device);
  const int repetitions = modules > 1000 ? 7 : 21;
  report({"open the page", [&] { user.openRootPage(); }, [&] { user.openFavorites(); }}, modules,
         repetitions);
  measureQueries(user, modules, repetitions);
  double offset = 0;
  report({"scroll by a screen", [&] { offset += 700; },
          [&] {
            user.act("scroll", user.table(), {{"offset", offset}});
          }},
         modules, repetitions);
  user.act("scroll", user.table(), {{"offset", 0}});
  measureEdits(user, modules, repetitions);
}

}  // namespace
}  // namespace benchmarks

int main(int argc, char** argv) {
  const std::filesystem::path folder = argc > 1 ? argv[1] : ".";
  for (const int modules : {10, 100, 1000, 10000}) benchmarks::measureModules(folder, modules);
  return 0;
}
