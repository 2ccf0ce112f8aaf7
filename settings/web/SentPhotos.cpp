#include "settings/web/SentPhotos.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace settings {
namespace {

constexpr std::string_view prefix = "sent/";
constexpr std::size_t mostKept = 2;

}  // namespace

std::string SentPhotos::keep(PhotoResult photo) {
  std::string name = std::string(prefix) + std::to_string(++_count);
  _sent.push_back({name, std::move(photo)});
  if (_sent.size() > mostKept) _sent.pop_front();
  return name;
}

std::optional<PhotoResult> SentPhotos::find(std::string_view name) const {
  const auto found = std::ranges::find(_sent, name, &Sent::name);
  return found == _sent.end() ? std::nullopt : std::optional(found->photo);
}

void SentPhotos::drop(std::string_view name) {
  std::erase_if(_sent, [&](const Sent& sent) { return sent.name == name; });
}

bool SentPhotos::isName(std::string_view name) {
  return name.starts_with(prefix);
}

}  // namespace settings
