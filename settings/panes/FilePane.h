#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "platform/foundation/files/FileSystem.h"
#include "platform/foundation/values/Collections.h"

namespace settings {

// A property list's value for display: JSON as everywhere else, but data only with its size,
// {"data": bytes}.
nlohmann::json glanceOfValue(const platform::Value& value);

// The preference file as it is on disk, any problem with it, and what has changed in it. Reads the
// file at each call; keeps only what the comparison needs. Threads: one.
class FilePane {
 public:
  explicit FilePane(platform::FileSystem& files) : _files(files) {}

  // Later changes are relative to the current content of the file.
  void beginAction();
  // The member `file` of the "side" message in docs/tree.md.
  nlohmann::json json();

 private:
  enum class State { ok, missing, problem };
  void read();
  void parse();

  platform::FileSystem& _files;
  std::string _bytes;  // as read last
  State _state = State::missing;
  std::string _problem;
  platform::Dictionary _entries;
  platform::Dictionary _before;
};

}  // namespace settings
