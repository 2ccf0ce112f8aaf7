#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace test_support {

// A new folder under TMPDIR that serves as "/" of a device; removed with its contents on
// destruction. If `prepared`, the preference folder "/var/jb/var/mobile/Library/Preferences" exists
// and "/var/jb" is a link to "/private/preboot/jb", as on a device.
//
// The functions take device paths and follow links inside the tree.
class TemporaryDeviceTree {
 public:
  enum class Contents { prepared, empty };
  explicit TemporaryDeviceTree(Contents contents = Contents::prepared);
  ~TemporaryDeviceTree();
  TemporaryDeviceTree(const TemporaryDeviceTree&) = delete;
  TemporaryDeviceTree& operator=(const TemporaryDeviceTree&) = delete;

  // The folder on this machine, without a trailing slash.
  const std::string& root() const { return _root; }
  // The path on this machine. Does not resolve links of the tree.
  std::string rawHostPath(std::string_view path) const;

  // Writes a file and creates missing folders. Fails the test on error.
  void write(std::string_view path, std::string_view text) const;
  // Writes an executable shell script. The first line is added.
  void writeProgram(std::string_view path, std::string_view script) const;
  // Empty if the file does not exist.
  std::optional<std::string> read(std::string_view path) const;
  bool exists(std::string_view path) const;
  void makeFolder(std::string_view path) const;
  void link(std::string_view path, std::string_view target) const;
  void remove(std::string_view path) const;
  void setMode(std::string_view path, unsigned mode) const;

 private:
  std::string _root;
};

}  // namespace test_support
