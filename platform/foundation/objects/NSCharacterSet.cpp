#include "platform/foundation/objects/NSCharacterSet.h"

#include <string>

#include "platform/foundation/objects/Process.h"

namespace platform {
namespace {

// "unreserved" and "sub-delims" of RFC 3986, allowed in every part.
constexpr std::string_view always =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~!$&'()*+,;=";

NSCharacterSet::Pointer alwaysAnd(std::string_view more) {
  return NSCharacterSet::characterSetWithCharactersInString(std::string(always).append(more));
}

struct URLCharacterSets {
  NSCharacterSet::Pointer user = alwaysAnd("");
  NSCharacterSet::Pointer host = alwaysAnd(":[]");
  NSCharacterSet::Pointer path = alwaysAnd("/:@")->without(";");
  NSCharacterSet::Pointer query = alwaysAnd("/:@?");
};

const URLCharacterSets& sets() {
  return Process::current().once<URLCharacterSets>();
}

}  // namespace

NSCharacterSet::Pointer NSCharacterSet::URLUserAllowedCharacterSet() {
  return sets().user;
}

NSCharacterSet::Pointer NSCharacterSet::URLPasswordAllowedCharacterSet() {
  return sets().user;
}

NSCharacterSet::Pointer NSCharacterSet::URLHostAllowedCharacterSet() {
  return sets().host;
}

NSCharacterSet::Pointer NSCharacterSet::URLPathAllowedCharacterSet() {
  return sets().path;
}

NSCharacterSet::Pointer NSCharacterSet::URLQueryAllowedCharacterSet() {
  return sets().query;
}

NSCharacterSet::Pointer NSCharacterSet::URLFragmentAllowedCharacterSet() {
  return sets().query;
}

NSCharacterSet::Pointer NSCharacterSet::characterSetWithCharactersInString(
    std::string_view characters) {
  auto result = make<NSCharacterSet>();
  for (const char each : characters) {
    const auto code = static_cast<unsigned char>(each);
    if (code < asciiCount) result->_members.set(code);
  }
  return result;
}

NSCharacterSet::Pointer NSCharacterSet::without(std::string_view characters) const {
  auto result = characterSetWithCharactersInString(characters);
  result->_members = _members & ~result->_members;
  return result;
}

bool NSCharacterSet::characterIsMember(char32_t character) const noexcept {
  return character < asciiCount && _members.test(character);
}

}  // namespace platform
