#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace settings {

// Notices that files in a folder of this machine were written, replaced or removed, whoever did it.
//
// Threads: belongs to one; the descriptor may be polled from any.
class FolderWatch {
 public:
  // Empty where the folder cannot be watched; `problem` says why.
  static std::unique_ptr<FolderWatch> open(const std::string& hostPath, std::string& problem);
  ~FolderWatch();
  FolderWatch(const FolderWatch&) = delete;
  FolderWatch& operator=(const FolderWatch&) = delete;

  // Readable when something has happened.
  int descriptor() const noexcept { return _descriptor; }
  // Takes in what has happened, without waiting. True where it concerned the file of that name, or
  // where so much has happened that the system lost count.
  bool takeChanges(std::string_view name);
  // The folder itself has gone: nothing will be noticed any more.
  bool isGone() const noexcept { return _gone; }

 private:
  explicit FolderWatch(int descriptor) : _descriptor(descriptor) {}
  bool takeBatch(std::string_view bytes, std::string_view name);

  int _descriptor;
  bool _gone = false;
};

}  // namespace settings
