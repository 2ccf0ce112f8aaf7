// Commands for the tasks of the process's URL session, and for their answers.

#include <functional>
#include <nlohmann/json.hpp>
#include <vector>

#include "platform/foundation/network/NSURLSession.h"
#include "settings/application/SettingsProcess.h"
#include "settings/scripting/ScriptCommand.h"
#include "settings/scripting/ScriptContext.h"

namespace settings {
namespace {

using nlohmann::json;
using platform::NSError;
using platform::NSHTTPURLResponse;
using platform::NSURL;
using platform::NSURLSession;
using Task = NSURLSession::Task;

// Runs the work at the application's edge with the tasks of the process.
StepOutcome withTasks(ScriptContext& context, const std::string& where,
                      const std::function<StepOutcome(const std::vector<Task>&)>& work) {
  if (!context.application().isOpen()) {
    return StepOutcome::failed("nothing is open; use `open` first");
  }
  StepOutcome outcome;
  const ActionResult ran = context.application().runAtEdge(
      where, [&] { outcome = work(NSURLSession::sharedSession()->tasks()); });
  return ran ? outcome : outcomeOf(ran);
}

// --- requests ---

json taskJson(const platform::NSURLSessionDataTask& task) {
  const auto& request = *task.originalRequest();
  json headers = json::object();
  for (const auto& [name, value] : request.allHTTPHeaderFields()) headers[name] = value;
  return {{"task", task.taskIdentifier()},
          {"state", taskStateName(task.state())},
          {"method", request.HTTPMethod()},
          {"url", request.URL() ? json(request.URL()->absoluteString()) : json()},
          {"headers", std::move(headers)},
          {"queue", task.creationQueue()}};
}

std::string taskText(const json& task) {
  std::string text = std::to_string(task["task"].get<std::uint64_t>()) + " " +
                     task["state"].get<std::string>() + ": " + task["method"].get<std::string>() +
                     " " + (task["url"].is_null() ? "(null)" : task["url"].get<std::string>()) +
                     " on " + task["queue"].get<std::string>();
  for (const auto& [name, value] : task["headers"].items()) {
    text += "\n  " + name + ": " + value.get<std::string>();
  }
  return text + "\n";
}

Step parseRequests(LineReader&) {
  return [](ScriptContext& context) {
    json all = json::array();
    std::string lines;
    StepOutcome outcome = withTasks(context, "requests", [&](const std::vector<Task>& tasks) {
      for (const Task& task : tasks) {
        all.push_back(taskJson(*task));
        lines += taskText(all.back());
      }
      return StepOutcome{};
    });
    if (outcome.ok) context.print(all, lines);
    return outcome;
  };
}

// --- answer ---

struct Answer {
  std::size_t task = 0;
  std::optional<std::int64_t> status;
  std::optional<std::string> file;
  std::optional<std::string> error;
};

std::int64_t readStatus(LineReader& reader) {
  constexpr std::size_t largest = 999;
  const std::size_t status = reader.index("S");
  if (status > largest) reader.fail("S must be a status from 0 to 999");
  return static_cast<std::int64_t>(status);
}

// Reads one NAME=VALUE from the line.
void readPart(LineReader& reader, Answer& answer) {
  if (reader.skipPrefix("status=")) {
    answer.status = readStatus(reader);
  } else if (reader.skipPrefix("data=")) {
    answer.file = reader.word("FILE");
  } else if (reader.skipPrefix("error=")) {
    answer.error = reader.word("TEXT");
  } else {
    reader.fail("not a part of an answer: \"" + reader.word("a part of the answer") +
                "\" (expected status=S, data=FILE or error=TEXT)");
  }
}

platform::URLAnswer urlAnswer(const Answer& given, const std::shared_ptr<NSURL>& url,
                              std::optional<platform::Data> data) {
  platform::URLAnswer answer{std::move(data), nullptr, nullptr};
  if (given.status) {
    using Initialiser = bool (NSHTTPURLResponse::*)(std::shared_ptr<NSURL>, std::int64_t);
    answer.response = platform::make(static_cast<Initialiser>(&NSHTTPURLResponse::initWithURL), url,
                                     *given.status);
  }
  if (given.error) {
    answer.error = NSError::errorWithDomain(platform::NSURLErrorDomain, platform::NSURLErrorUnknown,
                                            *given.error);
  }
  return answer;
}

// Runs the queued background work up to and including the completion handler. Returns how many
// pieces of work it added to the main queue.
std::size_t deliver(SettingsProcess& process, const platform::NSURLSessionDataTask& task) {
  platform::VirtualScheduler& clock = *process.virtualClock();
  const std::size_t before = clock.pendingMain();
  while (!task.completionQueue() && clock.runBackground(1) > 0) {
  }
  return clock.pendingMain() - before;
}

StepOutcome handOver(ScriptContext& context, const Answer& given, const std::vector<Task>& tasks,
                     std::optional<platform::Data> data) {
  if (given.task == 0 || given.task > tasks.size()) {
    return StepOutcome::failed("there is no task " + std::to_string(given.task) + "; there are " +
                               std::to_string(tasks.size()));
  }
  const Task& task = tasks[given.task - 1];
  auto answer = urlAnswer(given, task->originalRequest()->URL(), std::move(data));
  if (!NSURLSession::sharedSession()->answer(given.task, std::move(answer))) {
    return StepOutcome::failed("the task " + std::to_string(given.task) +
                               " already has its answer");
  }
  const std::size_t mainWork = deliver(*context.application().process(), *task);
  const std::string queue = task->completionQueue().value_or("");
  context.print({{"task", given.task}, {"queue", queue}, {"mainWork", mainWork}},
                "the completion handler ran on " + queue + ", then " + std::to_string(mainWork) +
                    (mainWork == 1 ? " piece" : " pieces") + " of work on the main queue");
  return {};
}

Step parseAnswer(LineReader& reader) {
  Answer given;
  given.task = reader.index("N");
  while (!reader.atEnd() && !reader.error()) readPart(reader, given);
  return [given](ScriptContext& context) {
    std::optional<platform::Data> data;
    if (given.file) {
      const ScriptFile file = context.readFile(*given.file);
      if (!file.problem.empty()) return StepOutcome::failed(file.problem);
      data = platform::Data(file.bytes);
    }
    return withTasks(
        context, "the answer of task " + std::to_string(given.task),
        [&](const std::vector<Task>& tasks) { return handOver(context, given, tasks, data); });
  };
}

}  // namespace

ScriptCommands requestCommands() {
  return {
      {"requests", "requests",
       "prints the tasks of the URL session: number, state, address, headers, and the queue that "
       "each was made on",
       &parseRequests},
      {"answer", "answer N [status=S] [data=FILE] [error=TEXT]",
       "gives a task its answer, runs background work up to its completion handler, and prints "
       "what ran on which queue",
       &parseAnswer},
  };
}

}  // namespace settings
