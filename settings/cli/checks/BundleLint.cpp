#include "settings/cli/checks/BundleLint.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <set>
#include <utility>

#include "platform/foundation/files/DeviceFileSystem.h"
#include "platform/foundation/objects/Class.h"
#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/values/Exception.h"
#include "platform/preferences/BundleInfo.h"
#include "platform/preferences/PSCellType.h"
#include "platform/preferences/PSItemRules.h"
#include "platform/preferences/PSListController.h"
#include "settings/application/Application.h"
#include "settings/cli/checks/SmokeWalk.h"
#include "settings/cli/common/BundleProcess.h"
#include "settings/cli/common/ScratchFolder.h"
#include "settings/device/DeviceTree.h"

namespace settings {
namespace {

namespace fs = std::filesystem;
using platform::Dictionary;
using platform::PSCellType;
using platform::Value;

// Kinds of rows that store a value and so need a key.
constexpr std::array<PSCellType, 6> kindsWithValue = {
    platform::PSSwitchCell,   platform::PSSegmentCell,        platform::PSSliderCell,
    platform::PSEditTextCell, platform::PSSecureEditTextCell, platform::PSLinkListCell};
struct InfoKey {
  const char* name;
  bool isForLoading;
};
constexpr std::array<InfoKey, 3> infoKeys = {
    {{"CFBundleIdentifier", false}, {"CFBundleExecutable", true}, {"NSPrincipalClass", true}}};

template <std::size_t N>
bool isOneOf(const std::array<PSCellType, N>& kinds, PSCellType kind) {
  return std::ranges::find(kinds, kind) != kinds.end();
}

class BundleLinter {
 public:
  explicit BundleLinter(fs::path bundle) : _bundle(std::move(bundle)) {}

  std::vector<LintFinding> run() {
    const bool canBeLoaded = lintInfo();
    std::string problem;
    _process = BundleProcess::openFolder(_bundle, problem);
    // Otherwise the problem would repeat what Info.plist lacks.
    if (!_process && canBeLoaded) add("Info.plist", "", problem);
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(_bundle)) {
      if (entry.path().extension() == ".plist") files.push_back(entry.path());
    }
    std::ranges::sort(files);
    for (const fs::path& file : files) {
      if (file.filename() != "Info.plist") lintList(file);
    }
    if (std::exchange(_process, nullptr)) lintPages();
    return std::move(_findings);
  }

 private:
  void add(const std::string& file, const std::string& row, const std::string& what) {
    _findings.push_back({file, row, what});
  }

  std::optional<Dictionary> readDictionary(const fs::path& path) {
    const auto file = platform::DeviceFileSystem("/").read(fs::absolute(path).string());
    const std::string name = path.filename().string();
    if (file.error) {
      add(name, "", file.error.message);
      return std::nullopt;
    }
    const auto list = platform::readPropertyList(file.bytes);
    if (list.error) add(name, "", "is not a property list: " + list.error->text());
    if (!list.error && !list.value.asDictionary()) add(name, "", "the root is not a dictionary");
    if (list.error || !list.value.asDictionary()) return std::nullopt;
    return *list.value.asDictionary();
  }

  // Checks that Info.plist has the values that loading the bundle needs.
  bool lintInfo() {
    const auto info = readDictionary(_bundle / "Info.plist");
    if (!info) return false;
    bool hasAll = true;
    for (const InfoKey& key : infoKeys) {
      if (!info->valueForKey(key.name).text().value_or("").empty()) continue;
      add("Info.plist", "", std::string("has no string under ") + key.name);
      hasAll = hasAll && !key.isForLoading;
    }
    return hasAll;
  }

  void lintList(const fs::path& path) {
    const auto list = readDictionary(path);
    if (!list) return;
    const Value items = list->valueForKey("items");
    const std::string name = path.filename().string();
    if (!items.asArray()) return add(name, "", "has no array under \"items\"");
    std::set<std::string> identifiers;
    std::size_t number = 0;
    for (const Value& item : *items.asArray()) {
      std::string row = "row " + std::to_string(++number);
      if (!item.asDictionary()) {
        add(name, row, "is not a dictionary");
        continue;
      }
      const auto identifier = item.asDictionary()->valueForKey("id").text();
      if (identifier) row += " (#" + *identifier + ")";
      if (identifier && !identifiers.insert(*identifier).second) {
        add(name, row, "the identifier \"" + *identifier + "\" is used twice");
      }
      lintItem(name, row, *item.asDictionary());
    }
  }

  void lintItem(const std::string& file, const std::string& row, const Dictionary& item) {
    const auto cell = item.valueForKey("cell").text();
    const auto kind = cell ? platform::cellTypeNamed(*cell) : std::nullopt;
    if (!kind) {
      const std::string missing =
          item.find("cell") ? "\"cell\" is not a string" : "has no \"cell\"";
      const std::string found = cell ? "unknown kind of row: \"" + *cell + "\"" : missing;
      return add(file, row, found + " (expected " + platform::cellTypeNames() + ")");
    }
    lintTexts(file, row, item, *kind);
    lintPicture(file, row, item);
    // The values can be checked only if they have the right types.
    if (const auto problem = platform::problemOfItemValues(item)) return add(file, row, *problem);
    lintTitles(file, row, item);
    if (_process) lintNames(file, row, item);
  }

  void lintTexts(const std::string& file, const std::string& row, const Dictionary& item,
                 PSCellType kind) {
    const bool isGroup = kind == platform::PSGroupCell;
    const bool isCalled = !item.valueForKey("label").text().value_or("").empty() ||
                          !item.valueForKey("title").text().value_or("").empty();
    if (!isGroup && !isCalled) {
      add(file, row, "has no \"label\" and no \"title\"");
    }
    if (isOneOf(kindsWithValue, kind) && item.valueForKey("key").text().value_or("").empty()) {
      add(file, row, "has no \"key\" to store its value under");
    }
  }

  // A page can show a row with values but no titles, but users cannot see what they choose.
  void lintTitles(const std::string& file, const std::string& row, const Dictionary& item) {
    if (item.find("validValues") && !item.find("validTitles")) {
      add(file, row, "has \"validValues\" and no \"validTitles\"");
    }
  }

  void lintPicture(const std::string& file, const std::string& row, const Dictionary& item) {
    const auto icon = item.valueForKey("icon").text();
    if (!icon) return;
    for (const char* end : {"", ".png", "@2x.png", "@3x.png"}) {
      const fs::path stem =
          fs::path(*icon).extension() == ".png" && *end ? fs::path(*icon).stem() : fs::path(*icon);
      if (fs::is_regular_file(_bundle / (stem.string() + end))) return;
    }
    add(file, row, "the picture \"" + *icon + "\" is not in the bundle");
  }

  void lintNames(const std::string& file, const std::string& row, const Dictionary& item) {
    if (const auto problem = platform::problemOfItemReferences(item, nullptr)) {
      return add(file, row, *problem);
    }
    const auto action = item.valueForKey("action").text();
    if (action && !isOffered(*action)) {
      add(file, row, "no page of the bundle offers the action \"" + *action + "\"");
    }
    if (const auto detail = item.valueForKey("detail").text()) lintSubList(file, row, *detail);
  }

  bool isOffered(const std::string& action) {
    const auto& classes = platform::Process::current().classes();
    return std::ranges::any_of(classes.names(), [&](const std::string& name) {
      const auto* const found = classes.find(name);
      return found && found->isSubclassOf("UIViewController") && found->operation(action);
    });
  }

  // Checks the list that the page behind a row loads.
  void lintSubList(const std::string& file, const std::string& row, const std::string& detail) {
    const auto* const found = _process->find(detail);
    if (!found || !found->isSubclassOf("PSListController") || detail == "PSListItemsController") {
      return;
    }
    try {
      const auto page =
          std::dynamic_pointer_cast<platform::PSListController>(found->makeInstance());
      if (!page) return;
      page->specifiers();
      if (page->problem()) add(file, row, "the page " + detail + ": " + page->problem()->text);
    } catch (const platform::Exception& exception) {
      add(file, row, "the page " + detail + " raises " + exception.what());
    }
  }

  // A missing list that a page names only in its code shows when the page is opened. So this opens
  // every page, on a temporary device.
  void lintPages() {
    const ScratchFolder scratch;
    if (scratch.path().empty())
      return add("Info.plist", "", "cannot create a temporary folder to open the pages");
    DeviceTreeOptions installed;
    installed.bundle = _bundle;
    const DeviceTreeResult device = DeviceTree::create(scratch.path() / "device", installed);
    if (!device) return add("Info.plist", "", device.problem);
    ApplicationOptions options;
    options.deviceRoot = device.tree->root().string();
    const ApplicationResult made = Application::create(options);
    if (!made.application) return add("Info.plist", "", made.error);
    SmokeReport report;
    SmokeWalk(*made.application, "lint", report).run();
    for (const std::string& text : report.brokenPages) addBrokenPage(text);
  }

  // The text starts with the name of the list. Problems in a list that exists, and problems of the
  // row that opens the page, have been reported already.
  void addBrokenPage(const std::string& text) {
    constexpr std::string_view extension = ".plist";
    const auto end = text.find(extension);
    const std::string file =
        end == std::string::npos ? "Info.plist" : text.substr(0, end + extension.size());
    const bool isTold = std::ranges::any_of(_findings, [&](const LintFinding& each) {
      return (each.file == file && each.row.empty()) || each.what.find(file) != std::string::npos;
    });
    if (!isTold) add(file, "", "a page cannot be shown: " + text);
  }

  fs::path _bundle;
  std::unique_ptr<BundleProcess> _process;
  std::vector<LintFinding> _findings;
};

}  // namespace

std::vector<LintFinding> lintBundle(const fs::path& bundle) {
  return BundleLinter(bundle).run();
}

}  // namespace settings
