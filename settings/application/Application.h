#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/files/FileSystem.h"
#include "platform/foundation/log/Log.h"
#include "platform/foundation/objects/DeviceTraits.h"
#include "platform/foundation/programs/Programs.h"
#include "settings/application/Time.h"
#include "settings/device/Product.h"
#include "settings/tree/ActionResult.h"
#include "settings/tree/CrashReport.h"

namespace platform {
class MainQueue;
class Object;
class PSSpecifier;
}  // namespace platform

namespace settings {

class ApplicationObserver;
class SettingsProcess;
struct PhotoResult;
struct SidePane;
struct ThumbnailFile;

struct ApplicationOptions {
  std::string deviceRoot;  // folder of this machine that stands for the device's "/"
  platform::DeviceTraits traits;
  Time time = Time::virtualClock;
  std::string bundlePath{settings::bundlePath};  // on the device
};

struct ApplicationResult;

// The Settings application on one device: loads the settings bundle, owns the window and the
// navigation, shows what it has as a tree of nodes (docs/tree.md) and is the user's hand. A browser
// page and a script are two presenters of it.
//
// An exception of the platform that leaves the bundle is caught here and shown as a `crash` node;
// "continue" goes on with the page as it is, "restart" starts a new process.
//
// Threads: an application belongs to the thread that created it, which is the main thread of its
// processes. Others may call `stop`, and what the main queue allows. Nothing here blocks longer
// than the disk but `run`, `waitForPrograms`, and a page that waits for a program.
class Application {
 public:
  // Does not open anything yet. Removes what was left in the device's folders by writers that were
  // ended in the middle of a write. Fails where the device root is no folder.
  static ApplicationResult create(ApplicationOptions options);
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  // A new process of the Settings application, on the root page of the bundle. Drops the former
  // one with all its pages; the device, its traits and its records stay. A bundle that cannot be
  // loaded becomes a page with a `problem`.
  void open();
  bool isOpen() const noexcept;

  // What is shown, as docs/tree.md says. The reference is valid until the next call of any
  // function of this object.
  const nlohmann::json& tree();
  // The revision of `tree()`: goes up by one with every tree that differs from the one before.
  std::uint64_t revision();
  // What the user did, as docs/tree.md says. Never raises, whatever the action holds.
  ActionResult perform(const nlohmann::json& action);
  // Chooses a picture that the user brought, as `readPhoto` gives it (PhotoLibrary.h), in the photo
  // picker of that node. Refused, with its problem as the message, where it is none.
  ActionResult choosePhoto(std::string_view node, const PhotoResult& photo);

  // Scrolls so that the row comes into sight, as a hand does before it taps; nothing where it is
  // in sight already. Refused where the node is no row.
  ActionResult reveal(std::string_view node);
  // The exception that nobody has answered yet with "continue" or "restart".
  const std::optional<CrashReport>& crash() const noexcept;
  // Runs a piece of work in the process, at the application's edge: an exception of the platform
  // that leaves it becomes the crash report. Refused before `open` and while a report is open.
  ActionResult runAtEdge(const std::string& where, const std::function<void()>& work);

  // Traits of the device, as the script command `trait` takes them ("appearance", "dark"). Which
  // neighbours there are and what becomes of the row "ControlCenter" counts from the next `open`.
  ActionResult setTrait(std::string_view name, std::string_view value);

  // --- Time ---
  // Virtual clock: moves it, running what falls due on the way. Refused with real time.
  ActionResult advance(double seconds);
  // Virtual clock: runs that many pieces of queued background work (none: all, with what they
  // queue). Gives how many ran.
  std::size_t runBackground(std::optional<std::size_t> count);

  // --- The main loop ---
  // Runs what is in the main queue and what is due in the process, calls `afterTurn`, and sleeps
  // until there is more, over and over until `stop`. While a crash report is open, the work of the
  // process is held.
  void run(const std::function<void()>& afterTurn);
  // Ends `run` after the turn in hand, and the program that a page waits for. May come before
  // `run`; there is no turn then.
  void stop();
  // What comes from outside of the process. It runs in `run`, and also while a page waits for a
  // program or waitForPrograms does. Lives as long as the application.
  platform::MainQueue& mainQueue() noexcept;

  // --- A page that waits for a program, which blocks the main thread as on a device ---
  // Called on the main thread over and over while that lasts longer than half a second: each half
  // second, and whenever the thread was woken. The tree then has a node `waiting`; every action but
  // "stop" on it is refused.
  void setWaitHandler(std::function<void()> handler);
  // Ends the program that is waited for: it is asked to, and killed a second later.
  void stopWaiting();
  // With the virtual clock the program is ended after these seconds (of the outside world; 5 at
  // first), as nobody can stop it.
  void setPatience(double seconds);

  // --- Beside the phone; each as the member of a "side" message in docs/tree.md ---
  // The panes that are the same for every presenter and sent as a whole.
  const std::vector<SidePane>& sidePanes() const noexcept;
  // The preference file as it is on the disk now, what is wrong with it, and what changed in it
  // since the user's last action began.
  nlohmann::json filePane();
  // The log entries from the cursor on; moves the cursor behind the last one. Starts at 0 and
  // goes on over `open`.
  nlohmann::json logSince(std::uint64_t& cursor);
  std::vector<platform::LogEntry> logEntriesSince(std::uint64_t& cursor);
  // All programs that were started, over all processes.
  nlohmann::json programs();
  std::vector<platform::ProgramRecord> programRecords();
  // Waits until every program that was started has ended, at most that long (of the outside
  // world). True where they have. For scripts, which do not see time pass.
  bool waitForPrograms(double timeoutSeconds = 5);
  // The specifier behind a row. Null where the node is gone or has none.
  nlohmann::json inspectRow(std::string_view node);
  // The same as an object, and what any node stands for (a row: its table). Empty where the node is
  // gone or has none.
  std::shared_ptr<platform::PSSpecifier> specifierAt(std::string_view node);
  std::shared_ptr<platform::Object> objectAt(std::string_view node);
  // Files written by the bundle since the cursor, over all processes.
  std::vector<platform::FileWrite> writesSince(std::uint64_t& cursor);
  // The bytes of an image (PNG or JPEG) that the tree names by hash; empty where none bears it. To
  // make those of a photo's thumbnail takes a while: see thumbnailWork.
  std::optional<std::string> imageBytes(std::string_view hash);
  // The work that makes the thumbnail of that hash, for any thread; empty for every other image.
  std::function<ThumbnailFile()> thumbnailWork(std::string_view hash);
  // That work has found that the photo is none: the library says so from now on.
  void noteThumbnailProblem(std::string_view hash, const std::string& problem);

  // The file system of the device, for changes from outside; they are not recorded as writes.
  platform::FileSystem& device();
  // The name of the bundle's folder: who makes the writes that are recorded. Programs that were
  // started write past the record.
  std::string bundleName() const;
  // The process that runs; null before `open`.
  SettingsProcess* process() noexcept;

  // The observer must outlive the application or be removed.
  void addObserver(ApplicationObserver* observer);
  void removeObserver(ApplicationObserver* observer);

 private:
  struct State;
  explicit Application(std::unique_ptr<State> state);
  ActionResult stopProgram(const nlohmann::json& action);
  ActionResult answerCrash(const nlohmann::json& action, bool restart);
  ActionResult setBounds(const nlohmann::json& action);
  std::optional<std::string> thumbnailBytes(std::string_view hash);
  std::unique_ptr<State> _state;
};

struct ApplicationResult {
  std::unique_ptr<Application> application;  // empty where it could not be made
  std::string error;                         // why, for people
};

}  // namespace settings
