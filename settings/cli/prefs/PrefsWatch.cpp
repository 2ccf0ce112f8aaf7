#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <utility>

#include "settings/cli/common/FolderWatch.h"
#include "settings/cli/common/StopSignal.h"
#include "settings/cli/prefs/PrefsOptions.h"
#include "settings/cli/prefs/PrefsSubcommands.h"
#include "settings/device/DevicePaths.h"
#include "settings/device/DeviceTree.h"
#include "settings/device/JsonText.h"

namespace settings {
namespace {

// Prints the changes in a preference file from one reading to the next.
class ChangePrinter {
 public:
  ChangePrinter(platform::FileSystem& files, std::string path, CommandContext& context)
      : _files(files), _path(std::move(path)), _context(context) {
    takeIn(readPreferenceFile(_files, _path));
  }

  void readAgain() {
    const platform::Dictionary before = _entries;
    const PreferenceFile file = readPreferenceFile(_files, _path);
    takeIn(file);
    for (const PreferenceChange& change : changesBetween(before, _entries)) print(change);
    _context.output.flush();
  }

 private:
  // A damaged file is reported once. The next valid file is compared with the last valid one.
  void takeIn(const PreferenceFile& file) {
    if (file.state == PreferenceFileState::damaged) {
      if (file.problem != _problem) _context.fail(file.problem);
    } else {
      _entries = file.entries;
    }
    _problem = file.problem;
  }

  void print(const PreferenceChange& change) {
    if (_context.json) {
      _context.output << jsonText(jsonOfChange(change)) << '\n';
    } else {
      printChange(_context.output, change);
    }
  }

  platform::FileSystem& _files;
  std::string _path;
  CommandContext& _context;
  platform::Dictionary _entries;
  std::string _problem;
};

ExitStatus watch(const PrefsOptions& options, CommandContext& context) {
  const auto files = openDeviceFiles(options, context);
  if (!files) return context.status;
  const StopSignal signal;
  platform::MainQueue queue;
  std::string problem = "the device has no folder " + std::string(preferencesPath);
  const auto folder = files->hostPath(preferencesPath);
  const auto changes = folder ? FolderWatch::open(queue, *folder, problem) : nullptr;
  if (!changes) return context.fail(problem);
  ChangePrinter printer(*files, preferenceFilePath(options.domain), context);
  context.messages << "watching " << preferenceFilePath(options.domain) << '\n' << std::flush;
  bool stopped = false;
  queue.addWait(signal.descriptor(), [&] { stopped = true; });
  changes->notify(preferenceFileName(options.domain), [&] { printer.readAgain(); });
  queue.runUntil([&] { return stopped || changes->isGone() || !context.output; });
  return changes->isGone() ? context.fail("the watched folder is gone") : ExitStatus::done;
}

}  // namespace

void addPrefsWatch(CLI::App& prefs, CommandContext& context) {
  CLI::App* command =
      prefs.add_subcommand("watch", "Print changes of the preference file until interrupted");
  const auto options = std::make_shared<PrefsOptions>();
  addPrefsOptions(*command, *options);
  addCommonOptions(*command, context, "prefs watch --json");
  command->callback([options, &context] { context.status = watch(*options, context); });
}

}  // namespace settings
