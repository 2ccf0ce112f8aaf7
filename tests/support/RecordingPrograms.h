#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/programs/Programs.h"

namespace test_support {

// Starts nothing: records what would be started and lets it end at once, as the test says.
class RecordingPrograms final : public platform::Programs {
 public:
  // What the program of that path prints (at most 64 KiB) and exits with; without this it prints
  // nothing and exits with 0.
  void answer(std::string_view path, std::string output, int exitStatus = 0);
  // Lets the start of that program fail.
  void failToStart(std::string_view path, int errorNumber);

  std::shared_ptr<platform::RunningProgram> start(const platform::ProgramRequest& request) override;
  std::vector<platform::ProgramRecord> records() override;

 private:
  struct Answer {
    std::string output;
    int exitStatus = 0;
    int startError = 0;
  };

  std::mutex _mutex;
  std::map<std::string, Answer, std::less<>> _answers;
  std::vector<platform::ProgramRecord> _records;
};

}  // namespace test_support
