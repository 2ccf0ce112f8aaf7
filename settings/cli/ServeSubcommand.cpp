#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <string>

#include "platform/foundation/scheduling/MainQueue.h"
#include "settings/application/Application.h"
#include "settings/cli/Subcommands.h"
#include "settings/cli/common/DeviceOptions.h"
#include "settings/cli/common/FolderWatch.h"
#include "settings/cli/common/PreferenceFile.h"
#include "settings/cli/common/StopSignal.h"
#include "settings/device/DevicePaths.h"
#include "settings/device/JsonText.h"
#include "settings/device/Product.h"
#include "settings/device/ProgramFolder.h"
#include "settings/web/PageHost.h"

namespace settings {
namespace {

struct ServeChoice {
  DeviceOptions device;
  PageServerOptions server;
  std::string page;
};

std::unique_ptr<FolderWatch> watchPreferences(Application& application, CommandContext& context) {
  std::string problem = "the device has no preferences folder";
  const auto folder = application.device().hostPath(preferencesPath);
  auto watch = folder ? FolderWatch::open(application.mainQueue(), *folder, problem) : nullptr;
  if (!watch) {
    context.fail(problem + "; changes by other programs are shown only after the next tap");
  }
  return watch;
}

void announce(const PageHost& host, CommandContext& context) {
  if (context.json) {
    context.output << jsonText(nlohmann::json{{"address", host.address()}}) << '\n';
  } else {
    context.output << host.address() << '\n';
  }
  context.output.flush();
}

ExitStatus serve(const ServeChoice& choice, CommandContext& context) {
  const auto tree = openDevice(choice.device, context);
  if (!tree) return context.status;
  StopSignal signal;
  ApplicationOptions options;
  options.deviceRoot = tree->root().string();
  options.traits = traitsOf(choice.device);
  options.time = Time::real;
  ApplicationResult made = Application::create(options);
  if (!made.application) return context.fail(made.error);
  const std::string page = choice.page.empty() ? sharedFolder("page").string() : choice.page;
  PageHostResult hosted = PageHost::create(*made.application, choice.server, page);
  if (!hosted.host) return context.fail(hosted.error);
  made.application->open();
  announce(*hosted.host, context);
  PageHost& host = *hosted.host;
  made.application->mainQueue().addWait(signal.descriptor(), [&host] { host.stop(); });
  const auto watch = watchPreferences(*made.application, context);
  if (watch) watch->notify(preferenceFileName(productDomain), [&host] { host.filesChanged(); });
  host.run();
  return ExitStatus::done;
}

}  // namespace

void addServe(CLI::App& program, CommandContext& context) {
  CLI::App* command = program.add_subcommand("serve", "Show the pages in a browser");
  const auto choice = std::make_shared<ServeChoice>();
  addDeviceOption(*command, choice->device);
  command->add_option("--port", choice->server.port, "Port on the loopback address; 0: a free one")
      ->capture_default_str()
      ->check(CLI::Range(0, 65535))
      ->type_name("N");
  command
      ->add_option("--page", choice->page, "Folder of the built page; default: the program's own")
      ->type_name("DIR");
  addTraitOptions(*command, choice->device);
  addCommonOptions(*command, context,
                   "serve --port 0 --idiom pad --screen 820x1180@2\n"
                   "Prints the address to open, and runs until it is interrupted.");
  command->callback([choice, &context] { context.status = serve(*choice, context); });
}

}  // namespace settings
