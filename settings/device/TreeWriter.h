#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/foundation/values/Value.h"

namespace settings {

// Fills a folder that stands for "/" of a device. The first failure is kept, and nothing is
// written after it, so that a caller asks once at the end.
class TreeWriter {
 public:
  explicit TreeWriter(std::filesystem::path root) : _root(std::move(root)) {}

  // Paths are the device's. Links that are relative are followed, and stay inside the folder.
  void folder(std::string_view path);
  void file(std::string_view path, std::string_view bytes);
  void program(std::string_view path, std::string_view script);
  void propertyList(std::string_view path, const platform::Value& value);
  void link(std::string_view path, std::string_view destination);
  // A file of this machine, or a folder with what is in it.
  void copy(std::string_view path, const std::filesystem::path& source);

  // For people; empty where everything went well.
  const std::string& problem() const noexcept { return _problem; }
  bool failed() const noexcept { return !_problem.empty(); }

 private:
  std::filesystem::path hostPath(std::string_view path) const;
  void fail(const std::string& what, const std::string& reason);

  std::filesystem::path _root;
  std::string _problem;
};

}  // namespace settings
