#include "tests/support/RecordingPrograms.h"

#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace test_support {

namespace {

constexpr int firstProcessIdentifier = 1000;

// A program that has already ended. Its output is in a pipe.
class EndedProgram final : public platform::RunningProgram {
 public:
  EndedProgram(int processIdentifier, int exitStatus, int output)
      : _processIdentifier(processIdentifier), _exitStatus(exitStatus), _output(output) {}
  ~EndedProgram() override {
    if (_output >= 0) ::close(_output);
  }

  int processIdentifier() const override { return _processIdentifier; }
  std::string readAvailable() override {
    std::string chunk(65536, '\0');
    const ssize_t count = _output < 0 ? 0 : ::read(_output, chunk.data(), chunk.size());
    chunk.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return chunk;
  }
  int outputDescriptor() const override { return _output; }
  std::optional<int> exitStatus() override { return _exitStatus; }
  void terminate() override {}

 private:
  const int _processIdentifier;
  const int _exitStatus;
  const int _output;
};

void print(int descriptor, const std::string& output) {
  if (descriptor < 0 || output.empty()) return;
  [[maybe_unused]] const ssize_t written = ::write(descriptor, output.data(), output.size());
}

}  // namespace

void RecordingPrograms::answer(std::string_view path, std::string output, int exitStatus) {
  const std::lock_guard lock(_mutex);
  _answers.insert_or_assign(std::string(path), Answer{std::move(output), exitStatus, 0});
}

void RecordingPrograms::failToStart(std::string_view path, int errorNumber) {
  const std::lock_guard lock(_mutex);
  _answers.insert_or_assign(std::string(path), Answer{{}, 0, errorNumber});
}

std::shared_ptr<platform::RunningProgram> RecordingPrograms::start(
    const platform::ProgramRequest& request) {
  const std::lock_guard lock(_mutex);
  const auto found = _answers.find(request.path);
  const Answer answer = found == _answers.end() ? Answer() : found->second;
  platform::ProgramRecord& record = _records.emplace_back();
  record.id = _records.size();
  record.request = request;
  record.startError = answer.startError;
  if (answer.startError != 0) return nullptr;
  record.exitStatus = answer.exitStatus;
  int pipe[2] = {-1, request.standardOutput};
  if (request.pipeStandardOutput && ::pipe2(pipe, O_CLOEXEC) != 0) return nullptr;
  print(pipe[1], answer.output);
  if (request.pipeStandardOutput) ::close(pipe[1]);
  return std::make_shared<EndedProgram>(firstProcessIdentifier + static_cast<int>(record.id),
                                        answer.exitStatus, pipe[0]);
}

std::vector<platform::ProgramRecord> RecordingPrograms::records() {
  const std::lock_guard lock(_mutex);
  return _records;
}

}  // namespace test_support
