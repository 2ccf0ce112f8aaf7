#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/programs/Programs.h"

namespace test_support {

// Records programs instead of starting them. They end at once with the configured result.
class RecordingPrograms final : public platform::Programs {
 public:
  // Sets the output (at most 64 KiB) and exit status of the program with that path. By default, a
  // program prints nothing and exits with 0.
  void answer(std::string_view path, std::string output, int exitStatus = 0);
  // Makes the start of that program fail.
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
