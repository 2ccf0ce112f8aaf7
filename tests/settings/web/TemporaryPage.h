#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace settings::test {

// A temporary folder. The destructor removes it with its content.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern =
        (std::filesystem::temp_directory_path() / "zentrova-test-XXXXXX").string();
    _path = ::mkdtemp(pattern.data());
  }
  ~TemporaryFolder() { std::filesystem::remove_all(_path); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& path() const { return _path; }
  std::string in(std::string_view name) const { return _path + "/" + std::string(name); }
  // Writes a file and its parent folders. Returns its path.
  std::string write(std::string_view name, std::string_view text) const {
    const std::string path = in(name);
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << text;
    return path;
  }
  std::string read(std::string_view name) const {
    std::ifstream stream(in(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
  }

 private:
  std::string _path;
};

// A built page of minimal size.
class TemporaryPage {
 public:
  TemporaryPage() {
    folder.write("index.html", "<!doctype html><title>page</title>");
    folder.write("app.js", "'use strict';");
    folder.write("fonts/Inter.woff2", "font");
  }
  TemporaryFolder folder;
};

}  // namespace settings::test
