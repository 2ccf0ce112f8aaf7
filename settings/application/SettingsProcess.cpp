#include "settings/application/SettingsProcess.h"

#include <utility>

#include "platform/foundation/FoundationClasses.h"
#include "platform/foundation/scheduling/ThreadedScheduler.h"
#include "platform/preferences/BundleInfo.h"
#include "platform/preferences/PreferencesClasses.h"
#include "platform/uikit/UIKitClasses.h"
#include "settings/application/BundleLoader.h"
#include "settings/application/LinkOpener.h"
#include "settings/application/RootController.h"
#include "settings/neighbours/NeighbourRegistry.h"
#include "settings/tree/ProblemPage.h"

namespace settings {

using platform::UINavigationController;
using platform::UIViewController;

namespace {

// "Name" of "/.../Name.bundle".
std::string nameOfFolder(const std::string& path) {
  const std::string name = path.substr(path.find_last_of('/') + 1);
  return name.substr(0, name.find('.'));
}

}  // namespace

SettingsProcess::SettingsProcess(const DeviceServices& services, Time time,
                                 std::shared_ptr<platform::MainQueue> outer)
    : _controlCenterRow(services.controlCenterRow),
      _process(std::make_unique<platform::Process>()) {
  if (time == Time::virtualClock) {
    auto scheduler = std::make_shared<platform::VirtualScheduler>(_process.get(), std::move(outer));
    _virtual = scheduler.get();
    _scheduler = std::move(scheduler);
  } else {
    _scheduler = std::make_shared<platform::ThreadedScheduler>(_process.get(), std::move(outer));
  }
  provideServices(services);
  registerClasses(services.neighbours);
}

SettingsProcess::~SettingsProcess() {
  const platform::ProcessScope scope(*_process);
  // Background work ends first, so that it does not use pages that are being destroyed.
  _scheduler->shutDown();
  _versionFooter.give(nullptr);
  _outer.reset();
  _window.reset();
}

void SettingsProcess::provideServices(const DeviceServices& services) {
  _process->provide<platform::Scheduler>(_scheduler);
  _process->provide<platform::FileSystem>(services.files);
  _process->provide<platform::Programs>(services.programs);
  _process->provide<platform::Log>(services.log);
  _process->provide<platform::DeviceTraits>(services.traits);
  _process->provide<platform::URLOpener>(
      std::make_shared<LinkOpener>([this] { return topPage(); }, services.openedURL));
}

void SettingsProcess::registerClasses(const NeighbourRegistry* neighbours) {
  platform::registerFoundationClasses(_process->classes());
  platform::registerUIKitClasses(_process->classes());
  platform::registerPreferencesClasses(_process->classes());
  registerRootController(_process->classes());
  if (neighbours) neighbours->registerClasses(_process->classes());
}

void SettingsProcess::load(const std::string& path) {
  loadBundleCode(path);
  show(makePage());
}

void SettingsProcess::loadBundleCode(const std::string& path) {
  LoadedBundle bundle = loadBundle(*_process, path);
  _bundlePath = path;
  _bundleCode = std::move(bundle.code);
  _bundleTitle = bundle.title.empty() ? nameOfFolder(path) : std::move(bundle.title);
  _principalClass = std::move(bundle.principalClass);
  _bundleProblem = std::move(bundle.problem);
  if (_bundleProblem) return;
  auto info = std::make_shared<platform::BundleInfo>();
  info->path = path;
  _process->provide<platform::BundleInfo>(std::move(info));
}

std::shared_ptr<UIViewController> SettingsProcess::makePage() {
  constexpr const char* title = "The settings cannot be shown";
  if (_bundleProblem) return ProblemPage::pageWithProblem(title, *_bundleProblem);
  const platform::Class* principal = _process->classes().find(_principalClass);
  if (!principal->isSubclassOf("UIViewController")) {
    return ProblemPage::pageWithProblem(
        title, _bundlePath + "/Info.plist: NSPrincipalClass is \"" + _principalClass +
                   "\", which is not a page (not a subclass of UIViewController).");
  }
  auto page = std::dynamic_pointer_cast<UIViewController>(principal->makeInstance());
  if (!page) {
    return ProblemPage::pageWithProblem(
        title, _principalClass + " could not be created (its init returned nothing).");
  }
  _versionFooter.give(page);
  return page;
}

void SettingsProcess::showProblem(const std::string& title, const std::string& text) {
  if (!_window) show(ProblemPage::pageWithProblem(title, text));
}

void SettingsProcess::show(const std::shared_ptr<UIViewController>& page) {
  const auto inner = platform::make<RootController>();
  inner->setRootListController(platform::make(
      &SettingsListController::initWithContents,
      SettingsListContents{_bundleTitle, _controlCenterRow, [this] { return makePage(); }}));
  inner->pushViewController(page, false);
  inner->setNavigationBarHidden(true);
  auto outer = platform::make(&UINavigationController::initWithRootViewController, inner);
  outer->navigationBar()->setPrefersLargeTitles(true);
  _outer = std::move(outer);
  _window = platform::make<platform::UIWindow>();
  _window->setRootViewController(_outer);
  _window->makeKeyAndVisible();
  settle();
}

std::shared_ptr<UINavigationController> SettingsProcess::inner() const {
  auto current = _outer;
  while (current) {
    auto below = std::dynamic_pointer_cast<UINavigationController>(current->topViewController());
    if (!below) break;
    current = std::move(below);
  }
  return current;
}

std::shared_ptr<UIViewController> SettingsProcess::topPage() const {
  const auto navigation = inner();
  return navigation ? navigation->topViewController() : nullptr;
}

void SettingsProcess::settle() {
  _scheduler->runMain();
  if (!_window) return;
  layOut();
  // Work that layout has queued as due now belongs to the same turn.
  _scheduler->runMain();
  layOut();
}

void SettingsProcess::layOut() {
  _window->layoutIfNeeded();
  if (_versionFooter.fit()) _window->layoutIfNeeded();
}

}  // namespace settings
