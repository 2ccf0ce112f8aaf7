#include "settings/application/Application.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

#include "settings/application/ApplicationState.h"
#include "settings/application/ControlCenterRow.h"
#include "settings/device/DevicePaths.h"
#include "settings/device/Product.h"
#include "settings/device/Traits.h"
#include "settings/panes/SidePanes.h"
#include "settings/tree/ActionMembers.h"
#include "settings/tree/NodeKinds.h"

namespace settings {

using nlohmann::json;

namespace {

constexpr double largestSide = 10000;  // points; the limit for a presenter's view

}  // namespace

ApplicationResult Application::create(ApplicationOptions options) {
  std::error_code error;
  if (!std::filesystem::is_directory(options.deviceRoot, error)) {
    return {nullptr, options.deviceRoot +
                         " is not a folder that can act as a device; create one with `" +
                         std::string(programName) + " device create`"};
  }
  auto files = std::make_shared<platform::DeviceFileSystem>(options.deviceRoot);
  // Temporary files of interrupted writes.
  for (const auto path : {productPreferencesPath, moduleConfigurationPath}) {
    files->removeStaleTemporaries(path.substr(0, path.rfind('/')));
  }
  auto state = std::make_unique<State>(std::move(options), std::move(files));
  return {std::unique_ptr<Application>(new Application(std::move(state))), {}};
}

Application::Application(std::unique_ptr<State> state) : _state(std::move(state)) {}
Application::~Application() = default;

void Application::open() {
  _state->open();
}

bool Application::isOpen() const noexcept {
  return _state->process != nullptr;
}

const json& Application::tree() {
  _state->refresh();
  return _state->tree;
}

std::uint64_t Application::revision() {
  _state->refresh();
  return _state->revision;
}

ActionResult Application::perform(const json& action) {
  const std::string name = stringMember(action, "action").value_or("");
  if (name == "stop") return stopProgram(action);
  if (_state->isBusy) return refused(_state->busyMessage());
  if (name == "reopen") {
    open();
    return {};
  }
  if (name == "trait") {
    return setTrait(stringMember(action, "name").value_or(""),
                    stringMember(action, "value").value_or(""));
  }
  if (name == "continue" || name == "restart") return answerCrash(action, name == "restart");
  if (name == "bounds") return setBounds(action);
  if (!nodeKinds().isAction(name)) return refused("unknown action: \"" + name + "\"");
  _state->refresh();
  const std::string place = _state->placeOf(action);
  const auto work = [&] { return _state->useHand(action); };
  // Scrolling is not a tap: the changes of the last action stay highlighted.
  return name == "scroll" ? _state->runAtEdge(place, work) : _state->runAction(place, work);
}

ActionResult Application::choosePhoto(std::string_view node, const PhotoResult& photo) {
  _state->refresh();
  return _state->runAction("a photo", [&] {
    return _state->hand->choosePhoto(std::string(node), photo, _state->snapshot.targets);
  });
}

ActionResult Application::stopProgram(const json& action) {
  const auto node = stringMember(action, "node").value_or("");
  if (_state->waitingNode.empty() || node != _state->waitingNode) {
    return refused("no page waits for a program");
  }
  stopWaiting();
  return {};
}

void Application::stopWaiting() {
  _state->stopRequested = true;
}

void Application::setWaitHandler(std::function<void()> handler) {
  _state->waitHandler = std::move(handler);
}

void Application::setPatience(double seconds) {
  _state->patience = seconds;
}

ActionResult Application::answerCrash(const json& action, bool restart) {
  const auto* const target = _state->target(stringMember(action, "node").value_or(""));
  if (!_state->crash || !target || target->kind != "crash") {
    return refused("there is no crash report to answer");
  }
  if (restart) {
    open();
    return {};
  }
  _state->crash.reset();
  _state->treeIsStale = true;
  return _state->runAtEdge("going on after a crash", [] { return ActionResult{}; });
}

ActionResult Application::setBounds(const json& action) {
  const auto width = numberMember(action, "width");
  const auto height = numberMember(action, "height");
  const auto sound = [](const std::optional<double>& side) {
    return side && *side >= 1 && *side <= largestSide;
  };
  if (!sound(width) || !sound(height)) {
    return refused("\"width\" and \"height\" must be numbers of points from 1 to 10000");
  }
  return _state->runAtEdge("a change of the bounds", [&] {
    if (const auto& window = _state->process->window()) window->setFrame({0, 0, *width, *height});
    return ActionResult{};
  });
}

ActionResult Application::reveal(std::string_view node) {
  const auto* const target = _state->target(node);
  if (!target) return refused("the node " + std::string(node) + " is gone");
  return _state->runAtEdge("scrolling", [&] { return _state->hand->reveal(*target); });
}

const std::optional<CrashReport>& Application::crash() const noexcept {
  return _state->crash;
}

ActionResult Application::runAtEdge(const std::string& where, const std::function<void()>& work) {
  return _state->runAtEdge(where, [&] {
    work();
    return ActionResult{};
  });
}

ActionResult Application::setTrait(std::string_view name, std::string_view value) {
  if (name == "neighbour") return _state->switchNeighbour(value);
  if (name == controlCenterRowTrait) {
    const auto row = controlCenterRowNamed(value);
    if (!row) return refused(controlCenterRowProblem(value));
    _state->services.controlCenterRow = *row;
    return {};
  }
  if (const auto problem = changeTrait(*_state->services.traits, name, value)) {
    return refused(*problem);
  }
  _state->treeIsStale = true;
  if (!_state->process || _state->crash || _state->isBusy) return {};
  return _state->runAtEdge("a change of the trait " + std::string(name), [&] {
    if (const auto& window = _state->process->window()) window->traitsDidChange();
    return ActionResult{};
  });
}

ActionResult Application::advance(double seconds) {
  if (_state->options.time != Time::virtualClock) {
    return refused("the real clock cannot be advanced");
  }
  return _state->runAtEdge("delayed work", [&] {
    _state->process->virtualClock()->advance(seconds);
    return ActionResult{};
  });
}

std::size_t Application::runBackground(std::optional<std::size_t> count) {
  std::size_t ran = 0;
  if (_state->options.time != Time::virtualClock) return ran;
  _state->runAtEdge("background work", [&] {
    auto& clock = *_state->process->virtualClock();
    ran = count ? clock.runBackground(*count) : clock.runAllBackground();
    return ActionResult{};
  });
  return ran;
}

void Application::run(const std::function<void()>& afterTurn) {
  State& state = *_state;
  for (state.main->runReady(); !state.stopped; state.main->runReady()) {
    state.runAtEdge("delayed work", [] { return ActionResult{}; });
    afterTurn();
    state.sleep();
  }
}

void Application::stop() {
  _state->main->push([state = _state.get()] { state->stopped = true; });
}

platform::MainQueue& Application::mainQueue() noexcept {
  return *_state->main;
}

const std::vector<SidePane>& Application::sidePanes() const noexcept {
  return _state->sidePanes;
}

json Application::filePane() {
  return _state->pane.json();
}

json Application::logSince(std::uint64_t& cursor) {
  return logJson(logEntriesSince(cursor));
}

std::vector<platform::LogEntry> Application::logEntriesSince(std::uint64_t& cursor) {
  return _state->logEntries.since(cursor);
}

json Application::programs() {
  return programsJson(programRecords());
}

std::vector<platform::ProgramRecord> Application::programRecords() {
  return _state->services.programs->records();
}

bool Application::waitForPrograms(double timeoutSeconds) {
  const auto end = platform::machineNanoseconds() + platform::nanosecondsOfSeconds(timeoutSeconds);
  if (!_state->main->runUntil([&] { return !_state->lastRunning(); }, end)) return false;
  _state->announceRestarts();
  return true;
}

json Application::inspectRow(std::string_view node) {
  const auto* const target = _state->target(node);
  if (!target || target->kind != "row") return nullptr;
  const platform::ProcessScope scope(_state->process->process());
  const auto specifier = specifierOfRow(*target);
  return specifier ? specifierJson(std::string(node), *specifier) : json();
}

std::shared_ptr<platform::PSSpecifier> Application::specifierAt(std::string_view node) {
  const auto* const target = _state->target(node);
  if (!target || target->kind != "row") return nullptr;
  const platform::ProcessScope scope(_state->process->process());
  return specifierOfRow(*target);
}

std::shared_ptr<platform::Object> Application::objectAt(std::string_view node) {
  const auto* const target = _state->target(node);
  return target ? target->object.lock() : nullptr;
}

std::vector<platform::FileWrite> Application::writesSince(std::uint64_t& cursor) {
  return _state->writes.since(cursor);
}

std::optional<std::string> Application::imageBytes(std::string_view hash) {
  _state->refresh();
  const auto image = _state->imageNamed(std::string(hash));
  if (!image) return thumbnailBytes(hash);
  const platform::ProcessScope scope(_state->process->process());
  return encodedImage(image);
}

std::optional<std::string> Application::thumbnailBytes(std::string_view hash) {
  const auto work = thumbnailWork(hash);
  if (!work) return std::nullopt;
  ThumbnailFile made = work();
  if (made.problem.empty()) return std::move(made.bytes);
  noteThumbnailProblem(hash, made.problem);
  return std::nullopt;
}

std::function<ThumbnailFile()> Application::thumbnailWork(std::string_view hash) {
  return _state->photos.thumbnailWork(hash);
}

void Application::noteThumbnailProblem(std::string_view hash, const std::string& problem) {
  _state->photos.noteProblem(hash, problem);
  _state->treeIsStale = true;
  for (auto* observer : _state->observers) observer->treeChanged();
}

platform::FileSystem& Application::device() {
  return *_state->device;
}

std::string Application::bundleName() const {
  return std::filesystem::path(_state->options.bundlePath).stem().string();
}

SettingsProcess* Application::process() noexcept {
  return _state->process.get();
}

void Application::addObserver(ApplicationObserver* observer) {
  _state->observers.push_back(observer);
}

void Application::removeObserver(ApplicationObserver* observer) {
  std::erase(_state->observers, observer);
}

}  // namespace settings
