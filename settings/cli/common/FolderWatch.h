#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/scheduling/MainQueue.h"

namespace settings {

// Reports when files in a folder of this machine are written, replaced or removed by any program.
//
// Threads: the queue's.
class FolderWatch {
 public:
  // Returns nothing if the folder cannot be watched; `problem` says why. The queue must outlive the
  // watch.
  static std::unique_ptr<FolderWatch> open(platform::MainQueue& queue, const std::string& hostPath,
                                           std::string& problem);
  ~FolderWatch();
  FolderWatch(const FolderWatch&) = delete;
  FolderWatch& operator=(const FolderWatch&) = delete;

  // Runs the work in the queue each time the file with this name or the folder itself changes, or
  // the system has dropped events. Call once.
  void notify(std::string name, std::function<void()> changed);
  // The folder itself was removed: no more changes will be reported.
  bool isGone() const noexcept { return _gone; }

 private:
  FolderWatch(platform::MainQueue& queue, int descriptor)
      : _queue(queue), _descriptor(descriptor) {}
  void waitForChanges();
  bool takeChanges();
  bool takeBatch(std::string_view bytes);

  platform::MainQueue& _queue;
  const int _descriptor;
  std::uint64_t _wait = 0;
  std::string _name;
  std::function<void()> _changed;
  bool _gone = false;
};

}  // namespace settings
