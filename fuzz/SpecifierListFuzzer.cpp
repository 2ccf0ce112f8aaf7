// Uses any bytes as the specifier list of a page. The page is shown, and every row is scrolled to
// and tapped. A damaged list results in a page with an error, an invalid row in a row with an
// error. Values and actions of rows may raise platform exceptions only.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "fuzz/FuzzChecks.h"
#include "fuzz/TemporaryTree.h"
#include "platform/foundation/FoundationClasses.h"
#include "platform/foundation/files/DeviceFileSystem.h"
#include "platform/foundation/log/MemoryLog.h"
#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/objects/DeviceTraits.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/scheduling/VirtualScheduler.h"
#include "platform/foundation/values/Exception.h"
#include "platform/preferences/BundleInfo.h"
#include "platform/preferences/PSListController.h"
#include "platform/preferences/PreferencesClasses.h"
#include "platform/uikit/UIKitClasses.h"
#include "platform/uikit/controllers/UINavigationController.h"

namespace {

using fuzzing::require;
using platform::IndexPath;

constexpr const char* bundle = "/var/jb/Library/PreferenceBundles/Sample.bundle";

class ListPage : public platform::PSListController {
  PLATFORM_CLASS(ListPage)

 public:
  platform::PSSpecifiers specifiers() override {
    if (auto kept = keptSpecifiers()) return kept;
    keepSpecifiers(loadSpecifiersFromPlistName("Main", self<ListPage>()));
    return keptSpecifiers();
  }
};

// A process of the Settings application with only this page.
class Device {
 public:
  explicit Device(const std::string& root) : _scope(_process) {
    platform::registerFoundationClasses(_process.classes());
    platform::registerUIKitClasses(_process.classes());
    platform::registerPreferencesClasses(_process.classes());
    _process.classes().add(platform::ClassBuilder<ListPage>("PSListController").build());
    _process.provide<platform::Scheduler>(std::make_shared<platform::VirtualScheduler>(&_process));
    _process.provide<platform::FileSystem>(std::make_shared<platform::DeviceFileSystem>(root));
    _process.provide<platform::Log>(std::make_shared<platform::MemoryLog>());
    _process.provide(std::make_shared<platform::DeviceTraits>());
    _process.provide(std::make_shared<platform::BundleInfo>(platform::BundleInfo{bundle}));
  }

  void show() {
    _page = platform::make<ListPage>();
    _navigation = platform::make(&platform::UINavigationController::initWithRootViewController,
                                 std::static_pointer_cast<platform::UIViewController>(_page));
    _navigation->beginAppearanceTransition(true, false);
    _navigation->endAppearanceTransition();
    _navigation->view()->layoutIfNeeded();
    require(_page->specifiers() != nullptr, "a page without a list");
  }

  void tapEveryRow() {
    const auto table = _page->table();
    for (std::int64_t section = 0; section < table->numberOfSections(); ++section) {
      for (std::int64_t row = 0; row < table->numberOfRowsInSection(section); ++row) {
        tap(*table, {section, row});
      }
    }
  }

 private:
  void tap(platform::UITableView& table, IndexPath path) {
    try {
      table.userTapRow(path);
      _navigation->view()->layoutIfNeeded();
    } catch (const platform::Exception&) {
      // The application shows this as a crash report.
    }
    while (_navigation->topViewController() != _page) _navigation->popViewControllerAnimated(false);
  }

  platform::Process _process;
  platform::ProcessScope _scope;
  std::shared_ptr<ListPage> _page;
  std::shared_ptr<platform::UINavigationController> _navigation;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzzing::TemporaryTree tree;
  tree.write(std::string(bundle) + "/Main.plist",
             std::string_view(reinterpret_cast<const char*>(data), size));
  Device device(tree.root());
  device.show();
  device.tapEveryRow();
  return 0;
}
