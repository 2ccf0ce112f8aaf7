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

// What the application consists of. The device (its files, records and traits) stays; the process
// comes and goes. Threads: the application's own.
struct Application::State {
  State(ApplicationOptions given, std::shared_ptr<platform::DeviceFileSystem> files);
  ~State();

  // Runs the work in the process, and what falls due because of it. An exception of the platform
  // becomes the crash report. What has happened is told to the observers.
  ActionResult runAtEdge(const std::string& where, const std::function<ActionResult()>& work);
  void keepCrash(const platform::Exception& exception, const std::string& where);
  // Takes the tree anew where something may have changed.
  void refresh();
  void endProcess();
  // Drops the process and starts another.
  void open();
  // The user's hand does the action; what has become of a row that was edited is announced.
  ActionResult useHand(const nlohmann::json& action);
  // What the pages ask the device's folders for is looked at anew from here on.
  void beginTurn();
  // "CLASS off" or "CLASS on".
  ActionResult switchNeighbour(std::string_view value);
  void tellObservers();
  // Restarts of the home screen that have ended well since the last look.
  void announceRestarts();
  // The program that was started last of those that run.
  std::optional<platform::ProgramRecord> lastRunning() const;
  // --- While a page waits for a program (ApplicationWaiting.cpp) ---
  // Called with the seconds that the page has waited; gives those at which to call it again.
  double whileWaiting(double seconds);
  // Asks the program to end, and ends it where it does not. As whileWaiting.
  double endProgram(const platform::ProgramRecord& program, double seconds);
  // The tree as it was, with a node that says what is waited for.
  void showWaiting(const platform::ProgramRecord& program);
  void endWaiting();
  // The refusal of everything but "stop" in the meantime; empty where nothing runs.
  std::string busyMessage() const;
  // Until there is something in the main queue or, where no crash report is open, in the process.
  void sleep();
  // What the user points at, for people: "tap on \"Respring\"".
  std::string placeOf(const nlohmann::json& action) const;
  const NodeTarget* target(std::string_view node);
  // An image that the tree names, or has named a short while ago; null for any other hash.
  std::shared_ptr<platform::UIImage> imageNamed(const std::string& hash) const;
  // What a node of the tree is called; empty where it is gone or has no name.
  std::string titleOf(const std::string& node);
  // What the user does, with the file pane told of it before.
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

  std::shared_ptr<platform::DevicePrograms> programs;  // those of the services
  bool isBusy = false;                                 // work is running in the process
  double patience = 5;                                 // seconds; with a clock that stands still
  std::string waitingNode;                             // empty: nobody waits for long
  bool stopRequested = false;
  std::optional<double> stoppedAt;  // seconds of the wait
  std::function<void()> waitHandler;

  std::optional<CrashReport> crash;
  std::uint64_t crashToken = 0;
  std::unique_ptr<SettingsProcess> process;
  std::unique_ptr<UserHand> hand;
  StageWatch stage;
  std::set<std::uint64_t> announcedPrograms;

  TreeSnapshot snapshot;
  PastImages pastImages;
  nlohmann::json tree;  // the snapshot's, with its revision
  std::uint64_t revision = 0;
  std::uint64_t identityBase = 0;
  bool treeIsStale = true;
};

}  // namespace settings
