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
  std::string deviceRoot;  // folder of this machine that acts as the device's "/"
  platform::DeviceTraits traits;
  Time time = Time::virtualClock;
  std::string bundlePath{settings::bundlePath};  // on the device
};

struct ApplicationResult;

// The Settings application on one device. It loads the settings bundle, owns the window and the
// navigation, exposes what is shown as a tree of nodes (docs/tree.md), and performs the user's
// actions. The browser page and scripts are its two presenters.
//
// An exception of the platform that leaves the bundle is caught here and shown as a `crash` node.
// "continue" goes on with the page as it is; "restart" starts a new process.
//
// Threads: an application belongs to the thread that created it, which is the main thread of its
// processes. Other threads may call `stop` and post to the main queue. Only `run`,
// `waitForPrograms` and a page that waits for a program block for longer than disk access.
class Application {
 public:
  // Does not open anything yet. Removes temporary files of interrupted writes from the device's
  // folders. Fails if the device root is not a folder.
  static ApplicationResult create(ApplicationOptions options);
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  // Starts a new process of the Settings application on the root page of the bundle. Ends the
  // previous process with all its pages; the device, its traits and its records remain. If the
  // bundle cannot be loaded, shows a page with a `problem`.
  void open();
  bool isOpen() const noexcept;

  // What is shown, in the form of docs/tree.md. The reference is valid until the next call of any
  // function of this object.
  const nlohmann::json& tree();
  // The revision of `tree()`. It increases by one each time the tree differs from the previous one.
  std::uint64_t revision();
  // Performs a user action in the form of docs/tree.md. Never raises, whatever the action contains.
  ActionResult perform(const nlohmann::json& action);
  // Chooses a picture that the user supplied in the photo picker of that node. `photo` is the
  // result of `readPhoto` (PhotoLibrary.h); if it has no picture, the action is refused with its
  // problem as the message.
  ActionResult choosePhoto(std::string_view node, const PhotoResult& photo);

  // Scrolls until the row is in sight, as a user does before a tap. Does nothing if it already is.
  // Refused if the node is not a row.
  ActionResult reveal(std::string_view node);
  // The exception that has not been answered yet with "continue" or "restart".
  const std::optional<CrashReport>& crash() const noexcept;
  // Runs work in the process. An exception of the platform that leaves the work becomes the crash
  // report. Refused before `open` and while a crash report is open.
  ActionResult runAtEdge(const std::string& where, const std::function<void()>& work);

  // Sets a trait of the device; name and value are as in the script command `trait` ("appearance",
  // "dark"). Changes of neighbours and of the row "ControlCenter" take effect at the next `open`.
  ActionResult setTrait(std::string_view name, std::string_view value);

  // --- Time ---
  // Virtual clock: advances it and runs the work that becomes due. Refused with real time.
  ActionResult advance(double seconds);
  // Virtual clock: runs that many pieces of queued background work; without a count, runs all,
  // including work that they queue. Returns how many ran.
  std::size_t runBackground(std::optional<std::size_t> count);

  // --- The main loop ---
  // Runs the work in the main queue and the due work of the process, calls `afterTurn`, and sleeps
  // until there is more work; repeats until `stop`. While a crash report is open, the work of the
  // process is held back.
  void run(const std::function<void()>& afterTurn);
  // Ends `run` after the current turn, and also the program that a page waits for. If called before
  // `run`, `run` returns without a turn.
  void stop();
  // The queue for events from outside the process. It runs in `run`, and also while a page or
  // waitForPrograms waits for a program. Lives as long as the application.
  platform::MainQueue& mainQueue() noexcept;

  // --- A page that waits for a program, which blocks the main thread as on a device ---
  // Called on the main thread when such a wait exceeds half a second: then every half second, and
  // each time the thread is woken. Meanwhile the tree contains a node `waiting`, and every action
  // but "stop" on it is refused.
  void setWaitHandler(std::function<void()> handler);
  // Terminates the program that a page waits for; kills it after one more second.
  void stopWaiting();
  // Virtual clock: a program that a page waits for is ended after this many seconds of real time
  // (default 5), since no user can stop it.
  void setPatience(double seconds);

  // --- Beside the phone; each as the member of a "side" message in docs/tree.md ---
  // The panes that are the same for all presenters and sent as a whole.
  const std::vector<SidePane>& sidePanes() const noexcept;
  // The preference file as it is on disk now, any problem with it, and what changed in it since the
  // user's last action began.
  nlohmann::json filePane();
  // The log entries from the cursor on; moves the cursor past the last one. Cursors start at 0 and
  // stay valid across `open`.
  nlohmann::json logSince(std::uint64_t& cursor);
  std::vector<platform::LogEntry> logEntriesSince(std::uint64_t& cursor);
  // All programs that were started, by all processes.
  nlohmann::json programs();
  std::vector<platform::ProgramRecord> programRecords();
  // Waits until all started programs have ended, but at most this long in real time. Returns
  // whether they have ended. For scripts, whose clock does not advance by itself.
  bool waitForPrograms(double timeoutSeconds = 5);
  // The specifier of a row. Null if the node no longer exists or has no specifier.
  nlohmann::json inspectRow(std::string_view node);
  // The same as an object; and the object behind any node (for a row, its table). Empty if the node
  // no longer exists or has none.
  std::shared_ptr<platform::PSSpecifier> specifierAt(std::string_view node);
  std::shared_ptr<platform::Object> objectAt(std::string_view node);
  // The files that the bundle has written since the cursor, in all processes.
  std::vector<platform::FileWrite> writesSince(std::uint64_t& cursor);
  // The bytes of an image (PNG or JPEG) that the tree names by its hash; empty for an unknown hash.
  // The bytes of a photo's thumbnail take a while to make: see thumbnailWork.
  std::optional<std::string> imageBytes(std::string_view hash);
  // The work that makes the thumbnail with that hash, to run on any thread; empty for every other
  // image.
  std::function<ThumbnailFile()> thumbnailWork(std::string_view hash);
  // Records that this work found that the file is not a photo; the library reports it from then on.
  void noteThumbnailProblem(std::string_view hash, const std::string& problem);

  // The file system of the device, for changes from outside. They are not recorded as writes.
  platform::FileSystem& device();
  // The name of the bundle's folder, as the writer in the recorded writes. Writes of started
  // programs are not recorded.
  std::string bundleName() const;
  // The running process; null before `open`.
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
  std::unique_ptr<Application> application;  // empty on failure
  std::string error;                         // the reason, for the user
};

}  // namespace settings
