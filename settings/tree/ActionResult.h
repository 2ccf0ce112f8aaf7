#pragma once

#include <string>
#include <utility>

namespace settings {

// What became of something that the user did. A refused action has changed nothing.
struct ActionResult {
  bool accepted = true;
  std::string message;  // why it was refused, for people; empty where it was accepted
  explicit operator bool() const noexcept { return accepted; }
};

inline ActionResult refused(std::string why) {
  return {false, std::move(why)};
}

// Refused, for that reason, where it was not done.
inline ActionResult accepted(bool done, const char* otherwise) {
  return done ? ActionResult{} : refused(otherwise);
}

}  // namespace settings
