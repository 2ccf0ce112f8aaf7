#include "settings/device/TreeWriter.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <system_error>

#include "platform/foundation/propertylist/PropertyList.h"

namespace settings {

namespace fs = std::filesystem;

fs::path TreeWriter::hostPath(std::string_view path) const {
  return _root / fs::path(path).relative_path();
}

void TreeWriter::fail(const std::string& what, const std::string& reason) {
  if (_problem.empty()) _problem = what + ": " + reason;
}

void TreeWriter::folder(std::string_view path) {
  if (failed()) return;
  std::error_code error;
  fs::create_directories(hostPath(path), error);
  if (error) fail("cannot make the folder " + hostPath(path).string(), error.message());
}

void TreeWriter::file(std::string_view path, std::string_view bytes) {
  folder(fs::path(path).parent_path().string());
  if (failed()) return;
  std::ofstream out(hostPath(path), std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.close();
  if (!out) fail("cannot write " + hostPath(path).string(), std::strerror(errno));
}

void TreeWriter::program(std::string_view path, std::string_view script) {
  file(path, script);
  if (failed()) return;
  std::error_code error;
  fs::permissions(hostPath(path), static_cast<fs::perms>(0755), error);
  if (error) fail("cannot make executable " + hostPath(path).string(), error.message());
}

void TreeWriter::propertyList(std::string_view path, const platform::Value& value) {
  const auto text = platform::writeXmlPropertyList(value);
  if (text.error) {
    fail("cannot write " + hostPath(path).string(), *text.error);
  } else {
    file(path, text.bytes);
  }
}

void TreeWriter::link(std::string_view path, std::string_view destination) {
  folder(fs::path(path).parent_path().string());
  if (failed()) return;
  std::error_code error;
  fs::create_symlink(fs::path(destination), hostPath(path), error);
  if (error) fail("cannot make the link " + hostPath(path).string(), error.message());
}

void TreeWriter::copy(std::string_view path, const fs::path& source) {
  folder(fs::path(path).parent_path().string());
  if (failed()) return;
  std::error_code error;
  fs::copy(source, hostPath(path), fs::copy_options::recursive, error);
  if (error) {
    fail("cannot copy " + source.string() + " to " + hostPath(path).string(), error.message());
  }
}

}  // namespace settings
