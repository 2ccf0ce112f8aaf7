#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "platform/foundation/files/FileSystem.h"
#include "platform/foundation/values/Collections.h"

namespace settings {

// A property list's value for people to see: as in JSON everywhere, but of data only the size,
// {"data": bytes}.
nlohmann::json glanceOfValue(const platform::Value& value);

// The preference file as it is on the disk, what is wrong with it, and what has changed in it.
// Reads the file each time; keeps nothing but what it needs to compare. Threads: one.
class FilePane {
 public:
  explicit FilePane(platform::FileSystem& files) : _files(files) {}

  // What the file holds now is what later changes are told against.
  void beginAction();
  // The member `file` of docs/tree.md's "side" message.
  nlohmann::json json();

 private:
  enum class State { ok, missing, problem };
  void read();
  void parse();

  platform::FileSystem& _files;
  std::string _bytes;  // as they were read last
  State _state = State::missing;
  std::string _problem;
  platform::Dictionary _entries;
  platform::Dictionary _before;
};

}  // namespace settings
