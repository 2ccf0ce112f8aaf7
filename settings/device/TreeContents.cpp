#include "settings/device/TreeContents.h"

#include "platform/foundation/values/Collections.h"
#include "settings/device/DevicePaths.h"
#include "settings/device/Product.h"
#include "settings/device/ProgramFolder.h"
#include "settings/device/ProgramStandIns.h"
#include "settings/device/TreeWriter.h"

namespace settings {

namespace {

void addMark(TreeWriter& writer) {
  writer.propertyList(treeMarkPath,
                      platform::Dictionary{{"format", treeFormat}, {"kind", treeKind}});
}

void addFolders(TreeWriter& writer) {
  writer.folder(jailbreakFolder);
  // Relative, so that programs of this machine also stay inside the tree.
  writer.link(installRoot, ".." + std::string(jailbreakFolder));
  writer.folder(preferencesPath);
  for (const auto* path : {"/tmp", "/usr/bin", "/var/log", "/var/tmp"}) writer.folder(path);
}

}  // namespace

void addSample(TreeWriter& writer) {
  const std::filesystem::path sample = sharedFolder("sample");
  writer.copy("/", sample / "device");
  writer.copy(supportPath, sample / "support");
  writer.copy(productPreferencesPath, sample / "preferences.plist");
}

std::string fillTree(const std::filesystem::path& root, const std::filesystem::path& bundle) {
  TreeWriter writer(root);
  addFolders(writer);
  writer.copy(bundlePath, bundle);
  addSample(writer);
  addProgramStandIns(writer);
  addMark(writer);
  return writer.problem();
}

}  // namespace settings
