#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <stdlib.h>
#include <string>
#include <string_view>
#include <vector>

#include "settings/device/DeviceTree.h"

namespace settings::tests {

// A temporary folder with a small bundle to install.
class DeviceTreeTest : public testing::Test {
 protected:
  using Path = std::filesystem::path;

  DeviceTreeTest() {
    std::string pattern = (std::filesystem::temp_directory_path() / "device-test-XXXXXX").string();
    EXPECT_NE(::mkdtemp(pattern.data()), nullptr);
    folder = pattern;
    write(bundle() / "Info.plist", infoOfVersion("1.2.3"));
    write(bundle() / "Root.plist", "rows");
    write(bundle() / "ZentrovaPrefs", "code");
  }
  ~DeviceTreeTest() override {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }

  static std::string infoOfVersion(const std::string& version) {
    return "<plist version=\"1.0\"><dict><key>CFBundleShortVersionString</key><string>" + version +
           "</string></dict></plist>";
  }
  static void write(const Path& path, const std::string& text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
  }
  static std::string read(const Path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  }
  static std::vector<std::string> namesIn(const Path& path) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path)) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  Path bundle() const { return folder / "built" / "ZentrovaPrefs.bundle"; }
  Path treePath() const { return folder / "device"; }
  DeviceTreeResult create() { return DeviceTree::create(treePath(), {bundle()}); }
  // The path on this machine of a device path.
  Path host(std::string_view path) const { return treePath() / Path(path).relative_path(); }

  Path folder;
};

}  // namespace settings::tests
