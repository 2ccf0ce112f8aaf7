#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace test_support {

// A folder of its own under TMPDIR that stands for "/" of a device; removed with all in it at the
// end. The preference folder "/var/jb/var/mobile/Library/Preferences" exists where `prepared`;
// there "/var/jb" is a link to "/private/preboot/jb", as on a device.
//
// The functions take paths as on the device and follow its links inside the tree.
class TemporaryDeviceTree {
 public:
  enum class Contents { prepared, empty };
  explicit TemporaryDeviceTree(Contents contents = Contents::prepared);
  ~TemporaryDeviceTree();
  TemporaryDeviceTree(const TemporaryDeviceTree&) = delete;
  TemporaryDeviceTree& operator=(const TemporaryDeviceTree&) = delete;

  // The folder on this machine, without a slash at the end.
  const std::string& root() const { return _root; }
  // The path on this machine; links of the tree are not resolved.
  std::string rawHostPath(std::string_view path) const;

  // Writes a file, with the folders above it. Fails the test where that is not possible.
  void write(std::string_view path, std::string_view text) const;
  // A shell script that can be run as a program; the first line is added.
  void writeProgram(std::string_view path, std::string_view script) const;
  // Empty where there is no such file.
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
