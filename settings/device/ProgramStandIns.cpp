#include "settings/device/ProgramStandIns.h"

#include <string>
#include <utility>

#include "settings/device/Product.h"
#include "settings/device/TreeWriter.h"

namespace settings {

namespace {

constexpr std::string_view bashPath = "/bin/bash";
constexpr std::string_view killallPath = "/var/jb/usr/bin/killall";
constexpr std::string_view sbreloadPath = "/var/jb/usr/bin/sbreload";

// The programs are started without an environment, so a script knows only its own path. The tree is
// the nearest folder above it that contains the mark. There may be no search path either, so only
// shell builtins and absolute paths are used. Each line is written with one call, so that lines of
// two programs do not mix. Text between @ signs is a placeholder.
constexpr std::string_view prologue = R"(#!/bin/sh
folder=${0%/*}
tree=$(cd "$folder" && pwd -P) || exit 1
while [ ! -e "$tree@TREE_MARK@" ]; do
  if [ -z "$tree" ]; then
    echo "$0: not in a device tree" >&2
    exit 1
  fi
  tree=${tree%/*}
done
tab=$(printf '\t')
line='@DEVICE_PATH@'
for argument in "$@"; do
  line="$line$tab$argument"
done
printf '%s\n' "$line" >> "$tree@PROGRAM_LOG@"
if [ -f "$0.stdout" ]; then
  exec /bin/cat "$0.stdout"
fi
)";

constexpr std::string_view killallScript = R"(signal=TERM
case $1 in
-*)
  signal=${1#-}
  shift
  ;;
esac
if [ $# -eq 0 ]; then
  echo 'usage: killall [-SIGNAL] NAME...' >&2
  exit 1
fi
status=0
for name in "$@"; do
  case $name in
  SpringBoard)
    printf 'killed with signal %s, started again\n' "$signal" >> "$tree@HOME_SCREEN_LOG@"
    ;;
  *)
    echo "No matching processes belonging to you were found" >&2
    status=1
    ;;
  esac
done
exit $status
)";

constexpr std::string_view sbreloadScript = R"(printf 'reloaded\n' >> "$tree@HOME_SCREEN_LOG@"
)";

// Behaves as the shell of a device: looks up the first word as a program and passes the rest as its
// arguments.
constexpr std::string_view bashScript = R"(if [ "$1" != dpkg ]; then
  echo "bash: $1: No such file or directory" >&2
  exit 127
fi
if [ "$2" != -s ]; then
  echo 'dpkg: error: need an action option' >&2
  exit 2
fi
if [ "$3" != @PACKAGE@ ]; then
  echo "dpkg-query: package '$3' is not installed and no information is available" >&2
  exit 1
fi
printf '%s\n' \
  'Package: @PACKAGE@' \
  'Status: install ok installed' \
  'Section: Tweaks' \
  'Installed-Size: 2048' \
  'Maintainer: @MAINTAINER@' \
  'Architecture: iphoneos-arm64' \
  'Version: 1.0.0' \
  'Depends: firmware (>= 13.0)' \
  'Description: @DESCRIPTION@'
)";

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
  for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

void addStandIn(TreeWriter& writer, std::string_view path, std::string_view body) {
  std::string script = std::string(prologue) + std::string(body);
  const std::pair<std::string_view, std::string_view> fields[] = {
      {"@DEVICE_PATH@", path},
      {"@TREE_MARK@", treeMarkPath},
      {"@PROGRAM_LOG@", programLogPath},
      {"@HOME_SCREEN_LOG@", homeScreenLogPath},
      {"@PACKAGE@", packageIdentifier},
      {"@MAINTAINER@", packageMaintainer},
      {"@DESCRIPTION@", packageDescription},
  };
  for (const auto& [field, text] : fields) replaceAll(script, field, text);
  writer.program(path, script);
}

}  // namespace

const std::vector<std::string_view>& programStandInPaths() {
  static const std::vector<std::string_view> paths{bashPath, killallPath, sbreloadPath};
  return paths;
}

void addProgramStandIns(TreeWriter& writer) {
  addStandIn(writer, bashPath, bashScript);
  addStandIn(writer, killallPath, killallScript);
  addStandIn(writer, sbreloadPath, sbreloadScript);
}

}  // namespace settings
