#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/foundation/files/FileSystem.h"
#include "platform/foundation/log/Log.h"
#include "platform/foundation/objects/DeviceTraits.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/programs/Programs.h"
#include "platform/foundation/scheduling/VirtualScheduler.h"
#include "platform/preferences/DarwinNotifications.h"
#include "platform/uikit/controllers/UINavigationController.h"
#include "platform/uikit/controllers/UIWindow.h"
#include "settings/application/ControlCenterRow.h"
#include "settings/application/Time.h"
#include "settings/application/VersionFooter.h"

namespace settings {

class NeighbourRegistry;

// What all processes of the application on one device share.
struct DeviceServices {
  std::shared_ptr<platform::FileSystem> files;  // observed
  std::shared_ptr<platform::Programs> programs;
  std::shared_ptr<platform::Log> log;
  std::shared_ptr<platform::DeviceTraits> traits;
  const NeighbourRegistry* neighbours = nullptr;
  ControlCenterRow controlCenterRow = ControlCenterRow::present;
  // Receives each web address that the user agreed to open.
  std::function<void(const std::string& url)> openedURL;
};

// One run of the Settings application: a process with its classes, services and clock, the bundle
// in it, and the window with its navigation. The destructor ends the run as on a device: pages are
// not notified, and pending work is lost.
//
// The page's navigation controller is the inner one; its navigation controller is the outer one.
// Only the outer one's bar is visible. The application's own list lies below the bundle's first
// page.
//
// A page that has a value "_versionLabel" gets a label for it, below its rows.
//
// Threads: main.
class SettingsProcess {
 public:
  // Creates an empty process; `load` adds the bundle and the window. `outer` is the queue that runs
  // while a page waits; may be null.
  SettingsProcess(const DeviceServices& services, Time time,
                  std::shared_ptr<platform::MainQueue> outer = nullptr);
  ~SettingsProcess();
  SettingsProcess(const SettingsProcess&) = delete;
  SettingsProcess& operator=(const SettingsProcess&) = delete;

  // Loads the bundle, creates its principal class and shows it over the application's own list. If
  // that fails, shows a page that says why. The process must be the current one. Raises what the
  // bundle raises.
  void load(const std::string& bundlePath);
  // Shows the window with a page that explains the failure. Does nothing if a page is shown
  // already.
  void showProblem(const std::string& title, const std::string& text);

  platform::Process& process() noexcept { return *_process; }
  platform::QueueScheduler& scheduler() noexcept { return *_scheduler; }
  // Null with real time.
  platform::VirtualScheduler* virtualClock() noexcept { return _virtual; }

  // The bundle's display name; its file name if it has none.
  const std::string& bundleTitle() const noexcept { return _bundleTitle; }
  // Empty before a page is shown.
  const std::shared_ptr<platform::UIWindow>& window() const noexcept { return _window; }
  const std::shared_ptr<platform::UINavigationController>& outer() const noexcept { return _outer; }
  // The navigation controller that contains the page on top.
  std::shared_ptr<platform::UINavigationController> inner() const;
  std::shared_ptr<platform::UIViewController> topPage() const;

  // Runs the main work that is due and performs pending layout. Raises what the bundle raises.
  void settle();

 private:
  void provideServices(const DeviceServices& services);
  void registerClasses(const NeighbourRegistry* neighbours);
  void loadBundleCode(const std::string& bundlePath);
  // The bundle's first page, or a page that says why there is none.
  std::shared_ptr<platform::UIViewController> makePage();
  void show(const std::shared_ptr<platform::UIViewController>& page);
  void layOut();

  std::shared_ptr<void> _bundleCode;  // destroyed last
  std::string _bundlePath;
  std::string _bundleTitle;
  std::string _principalClass;
  std::optional<std::string> _bundleProblem;
  ControlCenterRow _controlCenterRow;
  std::unique_ptr<platform::Process> _process;
  platform::VirtualScheduler* _virtual = nullptr;
  std::shared_ptr<platform::QueueScheduler> _scheduler;
  std::shared_ptr<platform::UIWindow> _window;
  std::shared_ptr<platform::UINavigationController> _outer;
  VersionFooter _versionFooter;
};

}  // namespace settings
