// What happens while a page of the bundle waits for a program, which blocks the main thread as on a
// device. Presenters are notified and may stop the program.

#include <algorithm>
#include <cmath>
#include <csignal>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>

#include "platform/foundation/objects/NSLog.h"
#include "platform/uikit/drawing/UIKitState.h"
#include "settings/application/ApplicationState.h"

namespace settings {

namespace {

constexpr double waitIsLongSeconds = 0.5;
// A terminated program that has not ended is killed after this time.
constexpr double graceSeconds = 1;

std::string commandOf(const platform::ProgramRecord& program) {
  std::string text = program.request.path;
  for (std::size_t i = 1; i < program.request.arguments.size(); ++i) {
    text += " " + program.request.arguments[i];
  }
  return text;
}

}  // namespace

double Application::State::whileWaiting(double seconds) {
  double next = std::numeric_limits<double>::infinity();
  const auto running = lastRunning();
  if (!running) return next;
  if (waitHandler) {
    if (seconds >= waitIsLongSeconds) {
      if (waitingNode.empty()) showWaiting(*running);
      waitHandler();
    }
    next = (std::floor(seconds / waitIsLongSeconds) + 1) * waitIsLongSeconds;
  }
  // With a virtual clock, no user is there to stop the program.
  const bool isImpatient = options.time == Time::virtualClock;
  if (stopped || (isImpatient && seconds >= patience)) stopRequested = true;
  if (stopRequested) return std::min(next, endProgram(*running, seconds));
  return isImpatient ? std::min(next, patience) : next;
}

double Application::State::endProgram(const platform::ProgramRecord& program, double seconds) {
  if (!stoppedAt) {
    stoppedAt = seconds;
    platform::NSLog("[Settings] stopped the program that the page waits for: %@",
                    {commandOf(program)});
    programs->sendSignal(program.id, SIGTERM);
  }
  const double end = *stoppedAt + graceSeconds;
  if (seconds < end) return end;
  programs->sendSignal(program.id, SIGKILL);
  return std::numeric_limits<double>::infinity();
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
  return waitingNode.empty() ? "the page is busy"
                             : "the page waits for a program: stop it, or wait until it ends";
}

}  // namespace settings
