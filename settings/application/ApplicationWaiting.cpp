// What happens while a page of the bundle waits for a program, which blocks the main thread as on a
// device: the presenters are told, and may stop the program.

#include <algorithm>
#include <csignal>
#include <nlohmann/json.hpp>
#include <utility>

#include "platform/foundation/log/Log.h"
#include "platform/uikit/drawing/UIKitState.h"
#include "settings/application/ApplicationState.h"

namespace settings {

namespace {

constexpr double waitIsLongSeconds = 0.5;
// A program that does not end when it is asked to is ended after that time.
constexpr double graceSeconds = 1;

std::string commandOf(const platform::ProgramRecord& program) {
  std::string text = program.request.path;
  for (std::size_t i = 1; i < program.request.arguments.size(); ++i) {
    text += " " + program.request.arguments[i];
  }
  return text;
}

}  // namespace

void Application::State::whileWaiting(double seconds) {
  std::optional<platform::ProgramRecord> running;
  for (const auto& record : programs->records()) {
    if (record.startError == 0 && !record.exitStatus) running = record;
  }
  if (!running) return;
  if (options.time == Time::virtualClock) stopRequested = stopRequested || seconds >= patience;
  if (stopRequested && !stoppedAt) {
    stoppedAt = seconds;
    platform::NSLog("[Settings] stopped the program that the page waits for: %@",
                    {commandOf(*running)});
    programs->sendSignal(running->id, SIGTERM);
  } else if (stoppedAt && seconds >= *stoppedAt + graceSeconds) {
    programs->sendSignal(running->id, SIGKILL);
  }
  if (!waitHandler || seconds < waitIsLongSeconds) return;
  if (waitingNode.empty()) showWaiting(*running);
  waitHandler();
}

void Application::State::showWaiting(const platform::ProgramRecord& program) {
  if (revision == 0) return;
  const auto identity = identityBase + platform::UIKitState::current().makeNodeIdentifier();
  snapshot.largestIdentity = std::max(snapshot.largestIdentity, identity);
  waitingNode = std::to_string(identity);
  auto& nodes = tree["nodes"];
  nodes[waitingNode] = settings::waitingNode(commandOf(program));
  nodes[tree["root"].get<std::string>()]["children"].push_back(waitingNode);
  tree["revision"] = ++revision;
  for (auto* observer : observers) {
    observer->announced("The page waits for " + commandOf(program));
    observer->treeChanged();
  }
}

void Application::State::endWaiting() {
  if (!std::exchange(waitingNode, {}).empty()) treeIsStale = true;
  stopRequested = false;
  stoppedAt.reset();
}

std::string Application::State::busyMessage() const {
  return waitingNode.empty() ? "the page is in the middle of something"
                             : "the page waits for a program: stop it, or wait until it ends";
}

}  // namespace settings
