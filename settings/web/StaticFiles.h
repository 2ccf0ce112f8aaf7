#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace settings {

// A file of the page.
struct StaticFile {
  std::shared_ptr<const std::string> bytes;
  std::string contentType;
};

// The files of the built page. All are read when the server starts. Requests never access the disk,
// so a path in a request cannot leave the folder. Threads: immutable after load, any.
class StaticFiles {
 public:
  // Reads a folder of this machine with its sub-folders. Ignores links and names with a leading
  // dot. Returns nothing if the folder has no index.html or a file cannot be read; `problem` says
  // why.
  static std::optional<StaticFiles> load(const std::string& folder, std::string& problem);

  // The file for the path of a request, such as "/app.js"; "/" is index.html. Null if there is
  // none.
  const StaticFile* find(std::string_view path) const;

 private:
  std::map<std::string, StaticFile, std::less<>> _files;
};

// The media type of a file, by its extension.
std::string contentTypeOf(std::string_view name);

}  // namespace settings
