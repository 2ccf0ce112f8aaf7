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

// The files of the built page, all read when the server starts: a request never reaches the disk,
// so no path that a client makes up can leave the folder.
// Threads: immutable once loaded, safe from any.
class StaticFiles {
 public:
  // Reads a folder of this machine with its sub-folders; links and names with a leading dot are
  // passed over. Empty where the folder holds no index.html or a file cannot be read; `problem`
  // says why.
  static std::optional<StaticFiles> load(const std::string& folder, std::string& problem);

  // The file that a request's path names, as "/app.js"; "/" is index.html. Null where there is
  // none.
  const StaticFile* find(std::string_view path) const;

 private:
  std::map<std::string, StaticFile, std::less<>> _files;
};

// The media type that a file of the page is sent as, by its name's ending.
std::string contentTypeOf(std::string_view name);

}  // namespace settings
