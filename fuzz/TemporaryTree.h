#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

namespace fuzzing {

// A folder that stands for "/" of a device, as long as the fuzzer runs.
class TemporaryTree {
 public:
  TemporaryTree()
      : _root(std::filesystem::temp_directory_path() /
              ("zentrova-fuzz-" + std::to_string(::getpid()))) {
    std::filesystem::create_directories(_root);
  }
  ~TemporaryTree() {
    std::error_code ignored;
    std::filesystem::remove_all(_root, ignored);
  }
  TemporaryTree(const TemporaryTree&) = delete;
  TemporaryTree& operator=(const TemporaryTree&) = delete;

  // On this machine.
  std::string root() const { return _root.string(); }

  // Writes a file, with the folders above it. The path is the device's.
  void write(const std::string& path, std::string_view bytes) const {
    const std::filesystem::path file = _root.string() + path;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
  }
  // Removes all that is in the tree.
  void clear() const {
    std::error_code ignored;
    std::filesystem::remove_all(_root, ignored);
    std::filesystem::create_directories(_root, ignored);
  }

 private:
  std::filesystem::path _root;
};

}  // namespace fuzzing
