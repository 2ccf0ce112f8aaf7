#include "settings/application/ApplicationState.h"

#include <algorithm>
#include <utility>

#include "platform/foundation/files/ObservedFileSystem.h"
#include "platform/foundation/log/MemoryLog.h"
#include "platform/foundation/programs/DevicePrograms.h"
#include "platform/foundation/values/Exception.h"
#include "platform/uikit/drawing/UIKitState.h"
#include "settings/panes/EditWatch.h"
#include "settings/tree/ActionMembers.h"

namespace settings {

using nlohmann::json;

namespace {

// Marks the process as busy during its lifetime.
class BusyScope {
 public:
  explicit BusyScope(bool& busy) : _busy(busy) { _busy = true; }
  ~BusyScope() { _busy = false; }
  BusyScope(const BusyScope&) = delete;
  BusyScope& operator=(const BusyScope&) = delete;

 private:
  bool& _busy;
};

// A row that is scrolled out of sight has no cell to supply its title: keeps the previous title.
void keepTitles(json& tree, const json& before) {
  if (!before.contains("nodes")) return;
  for (auto& [identity, node] : tree["nodes"].items()) {
    if (node.value("kind", "") != "row" || !node.value("title", "").empty()) continue;
    const auto known = before["nodes"].find(identity);
    if (known != before["nodes"].end()) node["title"] = known->value("title", "");
  }
}

}  // namespace

Application::State::State(ApplicationOptions given,
                          std::shared_ptr<platform::DeviceFileSystem> files)
    : options(std::move(given)), device(std::move(files)), pane(*device), photos(device) {
  auto observed = std::make_shared<platform::ObservedFileSystem>(device);
  observed->addObserver([this](const platform::FileWrite& write) { writes.add(write); });
  auto log = std::make_shared<platform::MemoryLog>();
  log->addObserver([this](const platform::LogEntry& entry) { logEntries.add(entry); });
  services.files = observed;
  services.log = log;
  // Programs that were started here must not outlive the application.
  programs = std::make_shared<platform::DevicePrograms>(observed, platform::AtEnd::kill);
  services.programs = programs;
  services.traits = std::make_shared<platform::DeviceTraits>(options.traits);
  services.neighbours = &neighbours;
  sidePanes = {
      {"file", SidePane::Source::files, [this] { return pane.json(); }},
      {"programs", SidePane::Source::memory, [this] { return programsJson(programs->records()); }},
  };
  services.openedURL = [this](const std::string& url) {
    for (auto* observer : observers) observer->openedURL(url);
  };
}

Application::State::~State() {
  endProcess();
}

void Application::State::endProcess() {
  hand.reset();
  // Releasing even a weak pointer to an object of the bundle needs the bundle's code.
  snapshot.targets = {};
  pastImages.clear();
  process.reset();
}

void Application::State::sleep() {
  if (process && !crash) {
    process->scheduler().sleep();
  } else {
    main->sleep(platform::MainQueue::never);
  }
}

void Application::State::beginTurn() {
  if (process) process->process().once<ModuleIndex>().forget();
}

void Application::State::keepCrash(const platform::Exception& exception, const std::string& where) {
  crash = CrashReport{exception.name(), exception.reason(), where};
  crashToken = platform::UIKitState::current().makeNodeIdentifier();
  treeIsStale = true;
}

ActionResult Application::State::runAtEdge(const std::string& where,
                                           const std::function<ActionResult()>& work) {
  if (!process) return {false, "nothing is open"};
  if (isBusy) return {false, busyMessage()};
  if (crash)
    return {false, "the page has crashed (" + crash->name + "): continue or restart first"};
  const BusyScope busy(isBusy);
  const platform::ProcessScope scope(process->process());
  beginTurn();
  const auto before = platform::UIKitState::current().changeCount();
  ActionResult result;
  try {
    result = work();
    process->settle();
  } catch (const platform::Exception& exception) {
    keepCrash(exception, where);
  }
  endWaiting();
  if (crash || platform::UIKitState::current().changeCount() != before) treeIsStale = true;
  tellObservers();
  return result;
}

ActionResult Application::State::useHand(const json& action) {
  const std::string node = stringMember(action, "node").value_or("");
  const EditWatch edit(action, target(node), titleOf(node));
  ActionResult result = hand->perform(action, snapshot.targets);
  const auto outcome = result ? edit.outcome() : std::nullopt;
  if (!outcome) return result;
  for (auto* observer : observers) observer->announced(*outcome);
  return result;
}

ActionResult Application::State::runAction(const std::string& where,
                                           const std::function<ActionResult()>& work) {
  if (!crash) pane.beginAction();
  return runAtEdge(where, work);
}

ActionResult Application::State::switchNeighbour(std::string_view value) {
  const auto space = std::min(value.find(' '), value.size());
  const std::string name(value.substr(0, space));
  const std::string_view way = value.substr(space);
  if (way != " on" && way != " off") return refused("expected on or off after CLASS");
  if (way == " on" ? neighbours.switchOn(name) : neighbours.switchOff(name)) {
    treeIsStale = true;
    return {};
  }
  std::string known;
  for (const auto& each : neighbours.names()) known += " " + each;
  return refused("unknown neighbour: \"" + name + "\" (expected one of:" + known + ")");
}

void Application::State::tellObservers() {
  stage.look(*process, [this](TransitionKind kind, double seconds) {
    for (auto* observer : observers) observer->transitioned(kind, seconds);
  });
  announceRestarts();
  if (!treeIsStale) return;
  for (auto* observer : observers) observer->treeChanged();
}

void Application::State::announceRestarts() {
  for (const auto& record : services.programs->records()) {
    if (record.exitStatus != 0 || !restartsHomeScreen(record.request)) continue;
    if (!announcedPrograms.insert(record.id).second) continue;
    for (auto* observer : observers) {
      observer->homeScreenRestarted();
      observer->announced("The home screen has restarted");
    }
  }
}

std::optional<platform::ProgramRecord> Application::State::lastRunning() const {
  std::optional<platform::ProgramRecord> running;
  for (auto& record : programs->records()) {
    if (record.startError == 0 && !record.exitStatus) running = std::move(record);
  }
  return running;
}

void Application::State::open() {
  if (isBusy) return;
  const BusyScope busy(isBusy);
  endProcess();
  crash.reset();
  identityBase = std::max(identityBase, snapshot.largestIdentity);
  process = std::make_unique<SettingsProcess>(services, options.time, main);
  process->scheduler().setWaitHandler([this](double seconds) { return whileWaiting(seconds); });
  hand = std::make_unique<UserHand>(*process, photos);
  pane.beginAction();
  const platform::ProcessScope scope(process->process());
  try {
    process->load(options.bundlePath);
  } catch (const platform::Exception& exception) {
    keepCrash(exception, "opening the settings");
    process->showProblem(
        "The settings cannot be shown",
        "The page raised an exception while it was opened: " + std::string(exception.what()));
  }
  endWaiting();
  stage.reset(*process);
  treeIsStale = true;
  tellObservers();
}

void Application::State::refresh() {
  // While a page is in the middle of its work, the previous tree is shown.
  if (!waitingNode.empty()) return;
  if (!std::exchange(treeIsStale, false) && revision > 0) return;
  beginTurn();
  SnapshotRequest request;
  if (process) request.window = process->window();
  if (process) request.outer = process->outer();
  if (process) request.bundleTitle = process->bundleTitle();
  request.photos = &photos;
  request.crash = crash ? &*crash : nullptr;
  request.crashToken = crashToken;
  request.identityBase = identityBase;
  request.neighbours = &neighbours;
  std::optional<platform::ProcessScope> scope;
  if (process) scope.emplace(process->process());
  const NamedImages before = std::exchange(snapshot.targets.images, {});
  try {
    snapshot = makeTreeSnapshot(request, *services.traits);
  } catch (const platform::Exception& exception) {
    if (!crash) keepCrash(exception, "asking the page for its rows");
    request.crash = &*crash;
    request.crashToken = crashToken;
    request.withPages = false;
    snapshot = makeTreeSnapshot(request, *services.traits);
    treeIsStale = false;
  }
  pastImages.keep(before, snapshot.targets.images);
  keepTitles(snapshot.tree, tree);
  snapshot.tree["revision"] = revision;
  if (revision > 0 && snapshot.tree == tree) return;
  snapshot.tree["revision"] = ++revision;
  tree = std::move(snapshot.tree);
}

std::shared_ptr<platform::UIImage> Application::State::imageNamed(const std::string& hash) const {
  const auto& images = snapshot.targets.images;
  const auto found = images.find(hash);
  return found == images.end() ? pastImages.find(hash) : found->second;
}

std::string Application::State::placeOf(const json& action) const {
  std::string place = stringMember(action, "action").value_or("something");
  const auto node = stringMember(action, "node");
  if (!node || !tree.contains("nodes") || !tree["nodes"].contains(*node)) return place;
  const json& members = tree["nodes"][*node];
  for (const char* name : {"title", "identifier", "string"}) {
    const auto found = members.find(name);
    if (found == members.end() || !found->is_string()) continue;
    return place + " on \"" + found->get<std::string>() + "\"";
  }
  return place + " on a " + members.value("kind", "node");
}

std::string Application::State::titleOf(const std::string& node) {
  refresh();
  if (!tree.contains("nodes")) return {};
  const auto found = tree["nodes"].find(node);
  return found == tree["nodes"].end() ? std::string() : found->value("title", "");
}

const NodeTarget* Application::State::target(std::string_view node) {
  refresh();
  const auto found = snapshot.targets.nodes.find(std::string(node));
  return found == snapshot.targets.nodes.end() ? nullptr : &found->second;
}

}  // namespace settings
