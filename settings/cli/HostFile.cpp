#include "settings/cli/HostFile.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <istream>
#include <iterator>
#include <ostream>
#include <system_error>

#include "platform/foundation/DeviceFileSystem.h"

namespace settings {
namespace {

namespace fs = std::filesystem;

std::string everything(std::istream& stream) {
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::string reasonOf(int code) {
  return code == 0 ? "unknown reason" : std::strerror(code);
}

std::optional<std::string> writeInPlace(const std::string& name, std::string_view bytes) {
  errno = 0;
  std::ofstream stream(name, std::ios::binary);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  stream.flush();
  if (stream) return std::nullopt;
  return "cannot write " + name + ": " + reasonOf(errno);
}

}  // namespace

std::string shownName(const std::string& name) {
  return name == "-" ? "standard input" : name;
}

std::optional<std::string> readHostFile(const std::string& name, std::istream& standardInput,
                                        std::string& problem) {
  if (name == "-") return everything(standardInput);
  std::error_code error;
  if (fs::is_directory(name, error)) {
    problem = "cannot read " + name + ": it is a folder";
    return std::nullopt;
  }
  errno = 0;
  std::ifstream stream(name, std::ios::binary);
  std::string bytes = stream ? everything(stream) : std::string();
  if (stream.bad() || !stream.is_open()) {
    problem = "cannot read " + name + ": " + reasonOf(errno);
    return std::nullopt;
  }
  return bytes;
}

std::optional<std::string> writeHostFile(const std::string& name, std::string_view bytes,
                                         std::ostream& standardOutput) {
  if (name == "-") {
    // A failure is seen when the output is flushed at the program's end.
    standardOutput.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return std::nullopt;
  }
  std::error_code error;
  const fs::file_status status = fs::status(name, error);
  if (fs::exists(status) && !fs::is_regular_file(status)) return writeInPlace(name, bytes);
  // Through a link the file that it leads to is replaced, not the link.
  const fs::path target = fs::weakly_canonical(fs::absolute(name), error);
  if (error) return "cannot write " + name + ": " + error.message();
  platform::DeviceFileSystem machine("/");
  const platform::FileError failed = machine.writeAtomically(target.native(), bytes);
  if (!failed) return std::nullopt;
  return "cannot write " + name + ": " + failed.message;
}

}  // namespace settings
