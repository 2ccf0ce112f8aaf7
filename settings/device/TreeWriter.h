#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/foundation/values/Value.h"

namespace settings {

// Fills a folder that acts as "/" of a device. After the first failure, nothing more is written, so
// callers need to check `problem` only once at the end.
class TreeWriter {
 public:
  explicit TreeWriter(std::filesystem::path root) : _root(std::move(root)) {}

  // Paths are device paths. Relative links are followed and cannot leave the folder.
  void folder(std::string_view path);
  void file(std::string_view path, std::string_view bytes);
  void program(std::string_view path, std::string_view script);
  void propertyList(std::string_view path, const platform::Value& value);
  void link(std::string_view path, std::string_view destination);
  // Copies a file of this machine, or a folder with its content.
  void copy(std::string_view path, const std::filesystem::path& source);

  // The first failure, for the user; empty if there was none.
  const std::string& problem() const noexcept { return _problem; }
  bool failed() const noexcept { return !_problem.empty(); }

 private:
  std::filesystem::path hostPath(std::string_view path) const;
  void fail(const std::string& what, const std::string& reason);

  std::filesystem::path _root;
  std::string _problem;
};

}  // namespace settings
