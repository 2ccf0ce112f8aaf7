#include "settings/cli/common/HostFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <istream>
#include <ostream>
#include <system_error>

#include "platform/foundation/files/DeviceFileSystem.h"
#include "platform/foundation/propertylist/PropertyList.h"

namespace settings {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t largest = platform::PropertyListLimits{}.bytes;

// Reads to the end, or to the first byte beyond the limit: the input may be endless.
std::string readUpToLimit(std::istream& stream) {
  constexpr std::size_t blockSize = std::size_t{64} * 1024;
  std::string bytes;
  while (stream && bytes.size() <= largest) {
    const std::size_t size = bytes.size();
    const std::size_t wanted = std::min(size + blockSize, largest + 1);
    if (bytes.capacity() < wanted) bytes.reserve(std::min(2 * wanted, largest + 1));
    bytes.resize(wanted);
    stream.read(bytes.data() + size, static_cast<std::streamsize>(wanted - size));
    bytes.resize(size + static_cast<std::size_t>(stream.gcount()));
  }
  return bytes;
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
  std::error_code error;
  if (name != "-" && fs::is_directory(name, error)) {
    problem = "cannot be read: it is a folder";
    return std::nullopt;
  }
  errno = 0;
  std::ifstream file;
  if (name != "-") file.open(name, std::ios::binary);
  std::istream& stream = name == "-" ? standardInput : file;
  std::string bytes = readUpToLimit(stream);
  if (stream.bad() || (name != "-" && !file.is_open())) {
    problem = "cannot be read: " + reasonOf(errno);
  } else if (bytes.size() > largest) {
    problem = "is larger than " + std::to_string(largest) + " bytes, which is the limit";
  } else {
    return bytes;
  }
  return std::nullopt;
}

std::optional<std::string> writeHostFile(const std::string& name, std::string_view bytes,
                                         std::ostream& standardOutput) {
  if (name == "-") {
    // The flush at the end of the program detects a failure.
    standardOutput.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return std::nullopt;
  }
  std::error_code error;
  const fs::file_status status = fs::status(name, error);
  if (fs::exists(status) && !fs::is_regular_file(status)) return writeInPlace(name, bytes);
  // A link is kept; the file that it points to is replaced.
  const fs::path target = fs::weakly_canonical(fs::absolute(name), error);
  if (error) return "cannot write " + name + ": " + error.message();
  platform::DeviceFileSystem machine("/");
  const platform::FileError failed = machine.writeAtomically(target.native(), bytes);
  if (!failed) return std::nullopt;
  return failed.message;
}

}  // namespace settings
