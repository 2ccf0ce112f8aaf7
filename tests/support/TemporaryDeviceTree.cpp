#include "tests/support/TemporaryDeviceTree.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <stdlib.h>
#include <system_error>

#include "platform/foundation/files/DeviceFileSystem.h"

namespace test_support {

namespace {

std::string makeTemporaryFolder() {
  std::string pattern = std::filesystem::temp_directory_path() / "zentrova-test-XXXXXX";
  if (::mkdtemp(pattern.data()) == nullptr) {
    throw std::system_error(errno, std::generic_category(), "mkdtemp " + pattern);
  }
  return pattern;
}

void expectDone(const platform::FileError& error) {
  EXPECT_EQ(error.code, 0) << error.message;
}

// Also removes items that a test has made unreadable.
void removeAll(const std::string& root) {
  namespace fs = std::filesystem;
  std::error_code ignored;
  for (auto each = fs::recursive_directory_iterator(
           root, fs::directory_options::skip_permission_denied, ignored);
       each != fs::recursive_directory_iterator(); each.increment(ignored)) {
    if (each->is_directory(ignored) && !each->is_symlink(ignored)) {
      fs::permissions(each->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    }
  }
  fs::remove_all(root, ignored);
}

}  // namespace

TemporaryDeviceTree::TemporaryDeviceTree(Contents contents) : _root(makeTemporaryFolder()) {
  if (contents == Contents::empty) return;
  makeFolder("/private/preboot/jb");
  makeFolder("/var");
  link("/var/jb", "/private/preboot/jb");
  makeFolder("/var/jb/var/mobile/Library/Preferences");
}

TemporaryDeviceTree::~TemporaryDeviceTree() {
  removeAll(_root);
}

std::string TemporaryDeviceTree::rawHostPath(std::string_view path) const {
  return _root + std::string(path);
}

void TemporaryDeviceTree::write(std::string_view path, std::string_view text) const {
  platform::DeviceFileSystem files(_root);
  const std::size_t slash = path.rfind('/');
  if (slash != std::string_view::npos && slash > 0) {
    expectDone(files.createDirectory(path.substr(0, slash)));
  }
  const auto host = files.hostPath(path);
  ASSERT_TRUE(host.has_value()) << path;
  std::ofstream file(*host, std::ios::binary | std::ios::trunc);
  file << text;
  EXPECT_TRUE(file.flush().good()) << *host;
}

void TemporaryDeviceTree::writeProgram(std::string_view path, std::string_view script) const {
  write(path, "#!/bin/sh\n" + std::string(script));
  setMode(path, 0755);
}

std::optional<std::string> TemporaryDeviceTree::read(std::string_view path) const {
  const auto contents = platform::DeviceFileSystem(_root).read(path);
  if (contents.error) return std::nullopt;
  return std::string(contents.bytes.view());
}

bool TemporaryDeviceTree::exists(std::string_view path) const {
  return platform::DeviceFileSystem(_root).fileExists(path);
}

void TemporaryDeviceTree::makeFolder(std::string_view path) const {
  expectDone(platform::DeviceFileSystem(_root).createDirectory(path));
}

void TemporaryDeviceTree::link(std::string_view path, std::string_view target) const {
  expectDone(platform::DeviceFileSystem(_root).createSymbolicLink(path, target));
}

void TemporaryDeviceTree::remove(std::string_view path) const {
  expectDone(platform::DeviceFileSystem(_root).remove(path));
}

void TemporaryDeviceTree::setMode(std::string_view path, unsigned mode) const {
  expectDone(platform::DeviceFileSystem(_root).setMode(path, mode));
}

}  // namespace test_support
