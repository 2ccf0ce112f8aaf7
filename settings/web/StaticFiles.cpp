#include "settings/web/StaticFiles.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

namespace settings {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t largestFileBytes = 16ULL * 1024 * 1024;

std::shared_ptr<const std::string> readFile(const fs::path& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) return nullptr;
  auto bytes = std::make_shared<std::string>(std::istreambuf_iterator<char>(stream),
                                             std::istreambuf_iterator<char>());
  return stream.bad() ? nullptr : bytes;
}

bool isHidden(const fs::path& path) {
  return path.filename().native().starts_with('.');
}

}  // namespace

std::string contentTypeOf(std::string_view name) {
  using Pair = std::pair<std::string_view, std::string_view>;
  constexpr std::array<Pair, 11> types = {{
      {".html", "text/html; charset=utf-8"},
      {".js", "text/javascript; charset=utf-8"},
      {".css", "text/css; charset=utf-8"},
      {".json", "application/json"},
      {".svg", "image/svg+xml"},
      {".png", "image/png"},
      {".jpg", "image/jpeg"},
      {".ico", "image/x-icon"},
      {".woff2", "font/woff2"},
      {".txt", "text/plain; charset=utf-8"},
      {".map", "application/json"},
  }};
  for (const auto& [ending, type] : types) {
    if (name.ends_with(ending)) return std::string(type);
  }
  return "application/octet-stream";
}

std::optional<StaticFiles> StaticFiles::load(const std::string& folder, std::string& problem) {
  StaticFiles files;
  std::error_code error;
  fs::recursive_directory_iterator items(folder, error);
  for (; !error && items != fs::recursive_directory_iterator(); items.increment(error)) {
    const fs::directory_entry& item = *items;
    if (isHidden(item.path())) items.disable_recursion_pending();
    if (isHidden(item.path()) || item.is_symlink() || !item.is_regular_file()) continue;
    std::error_code unreadable;
    const bool tooLarge = item.file_size(unreadable) > largestFileBytes;
    auto bytes = unreadable || tooLarge ? nullptr : readFile(item.path());
    if (!bytes) {
      problem = "cannot read the page's file " + item.path().string();
      return std::nullopt;
    }
    const std::string name = item.path().lexically_relative(folder).generic_string();
    files._files.emplace("/" + name, StaticFile{std::move(bytes), contentTypeOf(name)});
  }
  if (!error && files.find("/")) return files;
  problem = error ? "cannot read the page's folder " + folder + ": " + error.message()
                  : "the page's folder " + folder + " holds no index.html";
  problem += ". Build the page (./run does), or name the folder of a built one.";
  return std::nullopt;
}

const StaticFile* StaticFiles::find(std::string_view path) const {
  const auto found = _files.find(path == "/" ? std::string_view("/index.html") : path);
  return found == _files.end() ? nullptr : &found->second;
}

}  // namespace settings
