// Asks the package manager for the version of the installed product.

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/foundation/files/NSFileHandle.h"
#include "platform/foundation/objects/NSNotificationCenter.h"
#include "platform/foundation/programs/NSPipe.h"
#include "platform/foundation/programs/NSTask.h"
#include "platform/foundation/text/Utf.h"
#include "platform/foundation/values/Exception.h"
#include "root/ZVRRootListController.h"

namespace zentrova {

using platform::NSNotificationCenter;

namespace {

constexpr const char* shellPath = "/bin/bash";
constexpr std::string_view versionWord = "Version: ";

// The words are arguments of the shell itself; there is no "-c".
std::shared_ptr<platform::NSTask> makeQuery(const std::shared_ptr<platform::NSPipe>& output) {
  auto task = platform::make<platform::NSTask>();
  task->setLaunchPath(shellPath);
  task->setArguments({"dpkg", "-s", "com.hollowmere.zentrova"});
  task->setStandardOutput(output);
  return task;
}

// Empty if the bytes are not UTF-8.
std::optional<std::string> textOfBytes(std::string_view bytes) {
  for (std::size_t offset = 0; offset < bytes.size();) {
    const auto character = platform::utf::decode(bytes, offset);
    if (character.length == 0 || platform::utf::isSurrogate(character.scalar)) return std::nullopt;
    offset += character.length;
  }
  return std::string(bytes);
}

// Removes every occurrence; line ends are kept.
void removeVersionWord(std::string& text) {
  for (auto at = text.find(versionWord); at != std::string::npos; at = text.find(versionWord, at)) {
    text.erase(at, versionWord.size());
  }
}

// Observes the data of a file handle for as long as it lives.
class DataObservation {
 public:
  DataObservation(const std::shared_ptr<platform::NSFileHandle>& handle,
                  NSNotificationCenter::Block block)
      : _token(NSNotificationCenter::defaultCenter().addObserverForName(
            std::string(platform::NSFileHandleDataAvailableNotification), handle,
            std::move(block))) {}
  ~DataObservation() { NSNotificationCenter::defaultCenter().removeObserver(_token); }
  DataObservation(const DataObservation&) = delete;
  DataObservation& operator=(const DataObservation&) = delete;

 private:
  std::shared_ptr<platform::Object> _token;
};

}  // namespace

void ZVRRootListController::setVersionLabel(std::shared_ptr<platform::UILabel> label) {
  _versionLabel = std::move(label);
}

void ZVRRootListController::getCurrentVersion() {
  const auto pipe = platform::make<platform::NSPipe>();
  if (!pipe) return;
  const auto task = makeQuery(pipe);
  const auto output = pipe->fileHandleForReading();
  output->waitForDataInBackgroundAndNotify();
  // Called once: waitForDataInBackgroundAndNotify is not called again.
  const DataObservation observation(
      output, [weak = weakSelf<ZVRRootListController>(), output](const auto&) {
        if (const auto page = weak.lock()) page->showVersion(*output);
      });
  task->launch();
  task->waitUntilExit();
}

void ZVRRootListController::showVersion(platform::NSFileHandle& output) {
  const auto data = output.availableData();
  if (!data) throw platform::Exception("NoDataException", "No data read from stdout");
  const auto bytes = data.asData()->bytes();
  auto text = textOfBytes({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  if (text) removeVersionWord(*text);
  if (_versionLabel) _versionLabel->setText(std::move(text));
}

}  // namespace zentrova
