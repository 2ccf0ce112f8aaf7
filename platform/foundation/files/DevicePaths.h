#pragma once

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/files/SystemCalls.h"

namespace platform {

// Owns a file descriptor and closes it on destruction; -1 for none.
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
  // Closes the descriptor. Keeps errno.
  void reset() noexcept;

 private:
  SystemCalls* _calls = nullptr;
  int _number = -1;
};

// How paths are resolved inside the tree: by the kernel if it can, or step by step.
enum class PathResolution { automatic, stepByStep };

// A folder inside the tree and the name of an item in it. The name is "." for the root itself.
struct FolderAndName {
  Descriptor folder;
  std::string name;
};

// Resolves device paths inside the folder that serves as "/". Links, including absolute ones, are
// followed inside the tree; ".." at the root stays at the root. A path without a leading "/" is
// relative to the root. On failure, functions return -1 or empty and set errno. Threads: any.
class DevicePaths {
 public:
  DevicePaths(const std::string& rootHostPath, std::shared_ptr<SystemCalls> calls,
              PathResolution resolution);
  ~DevicePaths();
  DevicePaths(const DevicePaths&) = delete;
  DevicePaths& operator=(const DevicePaths&) = delete;

  const std::string& rootHostPath() const noexcept { return _rootHostPath; }

  // Opens the item with the flags of open(2). O_NOFOLLOW applies to the last component only.
  Descriptor open(std::string_view path, int flags);
  // Returns the folder that contains the item (opened with O_PATH) and the item's name. The item
  // need not exist. If it is a link, the link is not followed.
  std::optional<FolderAndName> parentOf(std::string_view path);
  // Like parentOf, but follows the item if it is a link.
  std::optional<FolderAndName> parentFollowingLinks(std::string_view path);
  // Returns the path on this machine, without links. The last components need not exist.
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
