#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/uikit/images/ImageCodecs.h"
#include "settings/cli/checks/CheckSubcommands.h"
#include "settings/cli/checks/SmokeWalk.h"
#include "settings/cli/common/DeviceOptions.h"
#include "settings/cli/common/ScratchFolder.h"
#include "settings/device/DeviceTree.h"
#include "settings/device/JsonText.h"
#include "settings/device/Product.h"
#include "settings/panes/FilePane.h"

namespace settings {
namespace {

namespace fs = std::filesystem;

struct SmokeShape {
  const char* idiom;
  const char* screen;
};
constexpr std::array<SmokeShape, 2> smokeShapes = {{{"phone", "390x844@3"}, {"pad", "820x1180@2"}}};
constexpr std::array<const char*, 5> smokeSystems = {"13.7", "14.0", "14.8", "15.0", "16.5"};
constexpr std::array<const char*, 2> smokeAppearances = {"light", "dark"};
// Real time in seconds that a page may wait for a program.
constexpr double smokePatience = 2;

using FileContentsByPath = std::map<std::string, std::string>;

// All regular files below the folder with their bytes, except the logs of the stand-ins.
FileContentsByPath filesBelow(const fs::path& root) {
  FileContentsByPath files;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    if (entry.is_symlink() || !entry.is_regular_file()) continue;
    const std::string path = "/" + fs::relative(entry.path(), root).string();
    if (path.ends_with(programLogPath) || path.ends_with(homeScreenLogPath)) continue;
    std::ifstream in(entry.path(), std::ios::binary);
    files[path].assign(std::istreambuf_iterator<char>(in), {});
  }
  return files;
}

// Settings of a device in use.
std::string usedPreferences() {
  constexpr std::uint32_t side = 8;
  constexpr std::size_t bytes = std::size_t{4} * side * side;
  const platform::ImagePixels pixels{side, side, std::vector<std::uint8_t>(bytes, 0x80)};
  const auto picture =
      platform::LibraryImageCodecs().encodePng(pixels, platform::LibraryImageCodecs::noLimit);
  const platform::Dictionary content{{"presentationStyle", 1},
                                     {"backgroundImage", platform::Data(picture.bytes)}};
  return platform::writeXmlPropertyList(content).bytes;
}

class SmokeRun {
 public:
  SmokeRun(Application& application, fs::path root)
      : _application(application), _root(std::move(root)) {
    _application.setPatience(smokePatience);
  }

  // Walks all kinds of devices that match the chosen traits.
  SmokeReport run(const DeviceOptions& chosen) {
    for (const SmokeShape& shape : smokeShapes) {
      for (const char* system : smokeSystems) {
        for (const char* appearance : smokeAppearances) {
          const bool isChosen = allows(chosen, "idiom", shape.idiom) &&
                                allows(chosen, "system", system) &&
                                allows(chosen, "appearance", appearance);
          if (isChosen) runWith(shape, system, appearance);
        }
      }
    }
    return std::move(_report);
  }

 private:
  static bool allows(const DeviceOptions& chosen, std::string_view name, std::string_view value) {
    return std::ranges::all_of(chosen.traits, [&](const auto& trait) {
      return trait.first != name || trait.second == value;
    });
  }

  void runWith(const SmokeShape& shape, const char* system, const char* appearance) {
    _application.setTrait("idiom", shape.idiom);
    _application.setTrait("screen", shape.screen);
    _application.setTrait("system", system);
    _application.setTrait("appearance", appearance);
    const std::string name = std::string(shape.idiom) + ", " + system + ", " + appearance;
    _application.device().remove(productPreferencesPath);
    walk(name + ", as new");
    _application.device().writeAtomically(productPreferencesPath, usedPreferences());
    walk(name + ", in use");
  }

  // Compares the files themselves, in addition to the writes that the bundle reports.
  void walk(const std::string& configuration) {
    const FileContentsByPath before = filesBelow(_root);
    SmokeWalk walk(_application, configuration, _report);
    walk.run();
    _application.waitForPrograms();
    FileContentsByPath after = filesBelow(_root);
    FileContentsByPath expected = before;
    for (const std::string& path : walk.expectedWrites()) {
      const auto host = _application.device().hostPath(path);
      if (!host) continue;
      const std::string relative = "/" + fs::relative(*host, _root).string();
      expected.erase(relative);
      after.erase(relative);
    }
    for (const auto& [path, bytes] : after) {
      const auto found = expected.find(path);
      if (found == expected.end() || found->second != bytes) {
        _report.findings.push_back({configuration, path, "the file has changed"});
      }
    }
    for (const auto& [path, bytes] : expected) {
      if (!after.contains(path))
        _report.findings.push_back({configuration, path, "the file is gone"});
    }
  }

  Application& _application;
  fs::path _root;
  SmokeReport _report;
};

void printSmoke(const SmokeReport& report, CommandContext& context) {
  if (context.json) {
    nlohmann::ordered_json findings = nlohmann::ordered_json::array();
    for (const SmokeFinding& each : report.findings) {
      findings.push_back(
          {{"configuration", each.configuration}, {"place", each.place}, {"what", each.what}});
    }
    const nlohmann::ordered_json all = {{"configurations", report.configurations},
                                        {"pages", report.pages},
                                        {"rows", report.rows},
                                        {"sheets", report.sheets},
                                        {"expected", report.expected},
                                        {"findings", findings}};
    context.output << jsonText(all, JsonStyle::indented) << '\n';
    return;
  }
  for (const SmokeFinding& each : report.findings) {
    context.output << each.configuration << ": " << each.place << ": " << each.what << '\n';
  }
  context.output << report.configurations << " configurations, " << report.pages << " pages, "
                 << report.rows << " rows, " << report.sheets
                 << " sheets: " << report.findings.size() << " findings\n";
  for (const std::string& each : report.expected) context.output << "expected: " << each << '\n';
}

// A copy of the named device, or a new one: the walk writes to it.
bool makeSmokeDevice(const DeviceOptions& options, const fs::path& folder,
                     CommandContext& context) {
  if (options.folder.empty()) {
    const DeviceTreeResult made = DeviceTree::create(folder);
    if (!made) context.status = context.fail(made.problem);
    return static_cast<bool>(made);
  }
  const auto tree = openDevice(options, context);
  if (!tree) return false;
  std::error_code error;
  fs::copy(tree->root(), folder, fs::copy_options::recursive | fs::copy_options::copy_symlinks,
           error);
  if (error) context.status = context.fail("cannot copy the device: " + error.message());
  return !error;
}

void smoke(const DeviceOptions& options, CommandContext& context) {
  const ScratchFolder scratch;
  const fs::path root = scratch.path() / "device";
  if (scratch.path().empty()) {
    context.status = context.fail("cannot create a temporary folder for the device");
    return;
  }
  if (!makeSmokeDevice(options, root, context)) return;
  ApplicationOptions application;
  application.deviceRoot = root.string();
  ApplicationResult made = Application::create(application);
  if (!made.application) {
    context.status = context.fail(made.error);
    return;
  }
  const SmokeReport report = SmokeRun(*made.application, root).run(options);
  printSmoke(report, context);
  if (!report.findings.empty()) context.status = ExitStatus::finding;
}

}  // namespace

void addSmoke(CLI::App& program, CommandContext& context) {
  CLI::App* command = program.add_subcommand(
      "smoke", "Open every page and sheet on every kind of device, and report exceptions");
  const auto options = std::make_shared<DeviceOptions>();
  options->folder.clear();
  command->add_option("--device", options->folder, "A copy of this device; default: a new one")
      ->type_name("DIR");
  std::vector<std::string> idioms;
  idioms.reserve(smokeShapes.size());
  for (const SmokeShape& shape : smokeShapes) idioms.emplace_back(shape.idiom);
  const std::vector<std::pair<std::string, std::vector<std::string>>> kinds = {
      {"idiom", idioms},
      {"system", {smokeSystems.begin(), smokeSystems.end()}},
      {"appearance", {smokeAppearances.begin(), smokeAppearances.end()}}};
  for (const auto& [trait, values] : kinds) {
    command
        ->add_option_function<std::string>(
            "--" + trait,
            [options, trait = trait](const std::string& value) {
              options->traits.emplace_back(trait, value);
            },
            "Only on devices of this kind")
        ->check(CLI::IsMember(values));
  }
  addCommonOptions(*command, context, "smoke --system 15.0 --idiom phone");
  command->callback([options, &context] { smoke(*options, context); });
}

}  // namespace settings
