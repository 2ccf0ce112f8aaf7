#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/foundation/files/DeviceFileSystem.h"
#include "platform/foundation/programs/DevicePrograms.h"
#include "platform/foundation/scheduling/MainQueue.h"
#include "settings/application/Application.h"
#include "settings/application/SettingsProcess.h"
#include "settings/application/StageWatch.h"
#include "settings/application/UserHand.h"
#include "settings/device/PhotoLibrary.h"
#include "settings/neighbours/ModuleIndex.h"
#include "settings/neighbours/NeighbourRegistry.h"
#include "settings/neighbours/Neighbours.h"
#include "settings/panes/FilePane.h"
#include "settings/panes/PastImages.h"
#include "settings/panes/RecordLog.h"
#include "settings/panes/SidePanes.h"
#include "settings/tree/TreeSnapshot.h"

namespace settings {

// The parts of the application. The device (its files, records and traits) is permanent; processes
// come and go. Threads: the application's.
struct Application::State {
  State(ApplicationOptions given, std::shared_ptr<platform::DeviceFileSystem> files);
  ~State();

  // Runs the work in the process and then the work that is due. An exception of the platform
  // becomes the crash report. Notifies the observers.
  ActionResult runAtEdge(const std::string& where, const std::function<ActionResult()>& work);
  void keepCrash(const platform::Exception& exception, const std::string& where);
  // Updates the tree if something may have changed.
  void refresh();
  void endProcess();
  // Ends the process and starts another one.
  void open();
  // Performs an action of the user's hand, and announces what happened to an edited row.
  ActionResult useHand(const nlohmann::json& action);
  // From here on, the pages' questions about the device's folders are answered from disk again.
  void beginTurn();
  // "CLASS off" or "CLASS on".
  ActionResult switchNeighbour(std::string_view value);
  void tellObservers();
  // Announces the restarts of the home screen that have succeeded since the last call.
  void announceRestarts();
  // Of the running programs, the one that was started last.
  std::optional<platform::ProgramRecord> lastRunning() const;
  // --- While a page waits for a program (ApplicationWaiting.cpp) ---
  // Called with the seconds that the page has waited; returns at how many seconds to call it again.
  double whileWaiting(double seconds);
  // Terminates the program, and kills it if it does not end. Parameter and result as whileWaiting.
  double endProgram(const platform::ProgramRecord& program, double seconds);
  // Adds a node to the tree that says which program the page waits for.
  void showWaiting(const platform::ProgramRecord& program);
  void endWaiting();
  // Why every action but "stop" is refused during a wait; empty if no work is running.
  std::string busyMessage() const;
  // Sleeps until there is work in the main queue or, if no crash report is open, in the process.
  void sleep();
  // The action and its node, for the user: "tap on \"Respring\"".
  std::string placeOf(const nlohmann::json& action) const;
  const NodeTarget* target(std::string_view node);
  // An image that the tree contains, or contained a short while ago; null for any other hash.
  std::shared_ptr<platform::UIImage> imageNamed(const std::string& hash) const;
  // The title of a node; empty if the node no longer exists or has none.
  std::string titleOf(const std::string& node);
  // Runs a user action; the file pane first records the state before it.
  ActionResult runAction(const std::string& where, const std::function<ActionResult()>& work);

  ApplicationOptions options;
  std::shared_ptr<platform::DeviceFileSystem> device;
  NeighbourRegistry neighbours{allNeighbours};
  DeviceServices services;
  RecordLog<platform::LogEntry> logEntries{10000};
  RecordLog<platform::FileWrite> writes{10000};
  FilePane pane;
  std::vector<SidePane> sidePanes;
  PhotoLibrary photos;
  std::vector<ApplicationObserver*> observers;

  std::shared_ptr<platform::MainQueue> main = std::make_shared<platform::MainQueue>();
  bool stopped = false;

  std::shared_ptr<platform::DevicePrograms> programs;  // owned by `services`
  bool isBusy = false;                                 // work is running in the process
  double patience = 5;                                 // seconds; with the virtual clock
  std::string waitingNode;                             // empty if there is no long wait
  bool stopRequested = false;
  std::optional<double> stoppedAt;  // seconds into the wait
  std::function<void()> waitHandler;

  std::optional<CrashReport> crash;
  std::uint64_t crashToken = 0;
  std::unique_ptr<SettingsProcess> process;
  std::unique_ptr<UserHand> hand;
  StageWatch stage;
  std::set<std::uint64_t> announcedPrograms;

  TreeSnapshot snapshot;
  PastImages pastImages;
  nlohmann::json tree;  // the snapshot's tree with its revision
  std::uint64_t revision = 0;
  std::uint64_t identityBase = 0;
  bool treeIsStale = true;
};

}  // namespace settings
