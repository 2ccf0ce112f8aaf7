#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/scheduling/MainQueue.h"

namespace settings {

// Notices that files in a folder of this machine were written, replaced or removed, whoever did it.
//
// Threads: belongs to that of the queue.
class FolderWatch {
 public:
  // Empty where the folder cannot be watched; `problem` says why. The queue must outlive the watch.
  static std::unique_ptr<FolderWatch> open(platform::MainQueue& queue, const std::string& hostPath,
                                           std::string& problem);
  ~FolderWatch();
  FolderWatch(const FolderWatch&) = delete;
  FolderWatch& operator=(const FolderWatch&) = delete;

  // Runs the work in the queue from now on whenever something has happened to the file of that
  // name, to the folder itself, or so much that the system lost count. Called once.
  void notify(std::string name, std::function<void()> changed);
  // The folder itself has gone: nothing will be noticed any more.
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
