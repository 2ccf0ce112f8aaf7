#pragma once

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/files/SystemCalls.h"

namespace platform {

// A file descriptor that is closed when it goes out of scope; -1 for none.
class Descriptor {
 public:
  Descriptor() = default;
  Descriptor(SystemCalls& calls, int number) noexcept : _calls(&calls), _number(number) {}
  Descriptor(Descriptor&& other) noexcept;
  Descriptor& operator=(Descriptor&& other) noexcept;
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { reset(); }

  int number() const noexcept { return _number; }
  explicit operator bool() const noexcept { return _number >= 0; }
  // Closes; errno stays as it was.
  void reset() noexcept;

 private:
  SystemCalls* _calls = nullptr;
  int _number = -1;
};

// How paths are resolved inside the tree: by the kernel where it can, or step by step.
enum class PathResolution { automatic, stepByStep };

// A folder inside the tree and the name of an item in it; "." for the root itself.
struct FolderAndName {
  Descriptor folder;
  std::string name;
};

// Resolves the device's paths inside the folder that stands for "/". Links are followed inside it,
// absolute ones too; ".." at the root stays there. A path that does not begin with "/" counts from
// the root as well. Failures are -1 or empty, with errno.
// Threads: any.
class DevicePaths {
 public:
  DevicePaths(const std::string& rootHostPath, std::shared_ptr<SystemCalls> calls,
              PathResolution resolution);
  ~DevicePaths();
  DevicePaths(const DevicePaths&) = delete;
  DevicePaths& operator=(const DevicePaths&) = delete;

  const std::string& rootHostPath() const noexcept { return _rootHostPath; }

  // Opens the item with the flags of open(2); O_NOFOLLOW stands for the last step only.
  Descriptor open(std::string_view path, int flags);
  // The folder that the item is in (open as a path only) and its name. The item need not exist,
  // and a link of that name is not followed.
  std::optional<FolderAndName> parentOf(std::string_view path);
  // The same, of the item that a link of that name leads to.
  std::optional<FolderAndName> parentFollowingLinks(std::string_view path);
  // The path on this machine, without links. Items at the end need not exist.
  std::optional<std::string> hostPath(std::string_view path);

 private:
  class Walk;

  Descriptor openByKernel(const std::string& path, int flags);
  Descriptor openStepByStep(std::string_view path, int flags);

  const std::string _rootHostPath;
  const std::shared_ptr<SystemCalls> _calls;
  Descriptor _root;
  int _rootError = 0;
  std::atomic<bool> _kernelResolves;
};

}  // namespace platform
