#include "settings/device/TreeContents.h"

#include "platform/foundation/values/Collections.h"
#include "settings/device/DeviceTree.h"
#include "settings/device/InstalledModules.h"
#include "settings/device/Photos.h"
#include "settings/device/ProgramStandIns.h"
#include "settings/device/TreeWriter.h"

namespace settings {

namespace {

// The link is relative, so that it leads into the tree for programs of this machine too.
constexpr std::string_view jailbreakFolder = "/private/preboot/hollowmere/jb";
constexpr std::string_view jailbreakLink = "../private/preboot/hollowmere/jb";

void addMark(TreeWriter& writer) {
  writer.propertyList(
      treeMarkPath, platform::Dictionary{{"format", treeFormat}, {"kind", "zentrova-device-tree"}});
}

void addFolders(TreeWriter& writer) {
  writer.folder(jailbreakFolder);
  writer.link("/var/jb", jailbreakLink);
  writer.folder(preferencesPath);
  for (const auto* path : {"/tmp", "/usr/bin", "/var/log", "/var/tmp"}) writer.folder(path);
}

}  // namespace

std::string fillTree(const std::filesystem::path& root, const std::filesystem::path& bundle) {
  TreeWriter writer(root);
  addFolders(writer);
  writer.copyFolder(bundlePath, bundle);
  addAvatar(writer);
  addInstalledModules(writer);
  addPhotos(writer);
  addProgramStandIns(writer);
  addMark(writer);
  return writer.problem();
}

}  // namespace settings
