#include "settings/web/PatchStream.h"

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace settings {
namespace {

using nlohmann::json;

// A member's name as one step of a JSON pointer.
std::string pointerStep(std::string_view name) {
  std::string step = "/";
  for (const char character : name) {
    if (character == '~') {
      step += "~0";
    } else if (character == '/') {
      step += "~1";
    } else {
      step += character;
    }
  }
  return step;
}

void removeMember(json& shown, json::iterator& member, const std::string& path, json& patch) {
  patch.push_back({{"op", "remove"}, {"path", path + pointerStep(member.key())}});
  member = shown.erase(member);
}

// The stream numbers its trees itself: an action that changes nothing is also answered by a patch.
bool isCounter(const std::string& path, const std::string& member) {
  return path.empty() && member == "revision";
}

// Members are compared down to this depth, for example "/nodes/17/frame". Deeper differences
// replace the member as a whole.
constexpr int levelsCompared = 3;

void changeObject(json& shown, const json& wanted, const std::string& path, int levels,
                  json& patch);

void changeMember(json& shown, const json& wanted, const std::string& path, int levels,
                  json& patch) {
  if (shown == wanted) return;
  if (levels > 1 && shown.is_object() && wanted.is_object()) {
    changeObject(shown, wanted, path, levels - 1, patch);
    return;
  }
  patch.push_back({{"op", "replace"}, {"path", path}, {"value", wanted}});
  shown = wanted;
}

void changeObject(json& shown, const json& wanted, const std::string& path, int levels,
                  json& patch) {
  for (auto member = shown.begin(); member != shown.end();) {
    if (wanted.contains(member.key()) || isCounter(path, member.key())) {
      ++member;
    } else {
      removeMember(shown, member, path, patch);
    }
  }
  for (auto member = wanted.begin(); member != wanted.end(); ++member) {
    if (isCounter(path, member.key())) continue;
    const std::string memberPath = path + pointerStep(member.key());
    const auto found = shown.find(member.key());
    if (found != shown.end()) {
      changeMember(*found, member.value(), memberPath, levels, patch);
      continue;
    }
    patch.push_back({{"op", "add"}, {"path", memberPath}, {"value", member.value()}});
    shown[member.key()] = member.value();
  }
}

}  // namespace

PatchStream::PatchStream() : _shown(std::make_unique<json>(json::object())) {}
PatchStream::~PatchStream() = default;

json PatchStream::advance(const json& tree) {
  ++_revision;
  json& shown = *_shown;
  json patch = json::array();
  changeObject(shown, tree, "", levelsCompared, patch);
  const char* operation = shown.contains("revision") ? "replace" : "add";
  patch.push_back({{"op", operation}, {"path", "/revision"}, {"value", _revision}});
  shown["revision"] = _revision;
  return patch;
}

const json& PatchStream::shown() const {
  return *_shown;
}

}  // namespace settings
