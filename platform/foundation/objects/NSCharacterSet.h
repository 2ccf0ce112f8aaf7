#pragma once

#include <bitset>
#include <memory>
#include <string_view>

#include "platform/foundation/objects/Object.h"

namespace platform {

// The characters that a part of an address may hold as they are: the sets of the platform, which
// follow the components of RFC 3986, section 3. Two differences from its letter are the platform's:
// the path's set leaves ";" out, since older readers take it for the start of parameters, and the
// host's set holds ":", "[" and "]", as an address in brackets needs them.
//
// Immutable; one of each per process. Threads: any.
class NSCharacterSet : public Object {
  PLATFORM_CLASS(NSCharacterSet)

 public:
  using Pointer = std::shared_ptr<NSCharacterSet>;

  static Pointer URLUserAllowedCharacterSet();
  static Pointer URLPasswordAllowedCharacterSet();
  static Pointer URLHostAllowedCharacterSet();
  static Pointer URLPathAllowedCharacterSet();
  static Pointer URLQueryAllowedCharacterSet();
  static Pointer URLFragmentAllowedCharacterSet();

  NSCharacterSet() = default;  // empty
  // The ASCII characters of the text; others are passed over.
  static Pointer characterSetWithCharactersInString(std::string_view characters);
  // A copy without the characters of the text.
  Pointer without(std::string_view characters) const;

  bool characterIsMember(char32_t character) const noexcept;

 private:
  static constexpr std::size_t asciiCount = 128;
  std::bitset<asciiCount> _members;
};

}  // namespace platform
