#include "prefs/InstallRoot.h"

#include "platform/foundation/files/FileSystem.h"
#include "platform/foundation/objects/Process.h"

namespace zentrova {

namespace {

std::string findInstallRoot() {
  auto& files = platform::Process::current().service<platform::FileSystem>();
  const auto attributes = files.attributesOfItem("/var/jb");
  // Only a link says where the tree is; a real folder does not.
  if (!attributes || attributes->type != platform::FileType::symbolicLink) return "/";
  const auto destination = files.destinationOfSymbolicLink("/var/jb");
  if (!destination || *destination == "/jb" || *destination == "/jb/") return "/";
  return *destination;
}

struct InstallRoot {
  std::string path = findInstallRoot();
};

}  // namespace

const std::string& getRootPath() {
  return platform::Process::current().once<InstallRoot>().path;
}

}  // namespace zentrova
