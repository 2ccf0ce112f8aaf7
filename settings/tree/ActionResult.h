#pragma once

#include <string>
#include <utility>

namespace settings {

// The result of a user action. A refused action has changed nothing.
struct ActionResult {
  bool accepted = true;
  std::string message;  // why it was refused, for the user; empty if it was accepted
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
