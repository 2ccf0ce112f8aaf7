#pragma once

#include <bitset>
#include <memory>
#include <string_view>

#include "platform/foundation/objects/Object.h"

namespace platform {

// The characters allowed unescaped in a part of a URL: the platform's sets, which follow the
// components of RFC 3986, section 3. As on the platform, two sets differ from the RFC: the path's
// set excludes ";", because older parsers treat it as the start of parameters, and the host's set
// includes ":", "[" and "]" for bracketed addresses.
//
// Immutable; each set exists once per process. Threads: any.
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
  // Uses the ASCII characters of the text; others are ignored.
  static Pointer characterSetWithCharactersInString(std::string_view characters);
  // Returns a copy without the characters of the text.
  Pointer without(std::string_view characters) const;

  bool characterIsMember(char32_t character) const noexcept;

 private:
  static constexpr std::size_t asciiCount = 128;
  std::bitset<asciiCount> _members;
};

}  // namespace platform
