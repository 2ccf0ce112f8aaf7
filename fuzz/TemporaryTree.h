#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>

namespace fuzzing {

// A folder that serves as "/" of a device while the fuzzer runs.
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

  // The path on this machine.
  std::string root() const { return _root.string(); }

  // Writes a file and creates missing folders. The path is a device path.
  void write(const std::string& path, std::string_view bytes) const {
    const std::filesystem::path file = _root.string() + path;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
  }
  // Removes everything in the tree.
  void clear() const {
    std::error_code ignored;
    std::filesystem::remove_all(_root, ignored);
    std::filesystem::create_directories(_root, ignored);
  }

 private:
  std::filesystem::path _root;
};

}  // namespace fuzzing
