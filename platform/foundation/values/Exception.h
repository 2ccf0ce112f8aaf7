#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace platform {

// The platform's exceptions, and nothing else: other failures are returned as values. On a device,
// an exception that leaves a callback of the bundle ends the application.
class Exception : public std::exception {
 public:
  Exception(std::string name, std::string reason);

  const std::string& name() const noexcept { return _name; }
  const std::string& reason() const noexcept { return _reason; }
  // Returns "name: reason".
  const char* what() const noexcept override { return _what.c_str(); }

 private:
  std::string _name;
  std::string _reason;
  std::string _what;
};

inline constexpr std::string_view invalidArgumentException = "NSInvalidArgumentException";
inline constexpr std::string_view rangeException = "NSRangeException";
inline constexpr std::string_view unknownKeyException = "NSUnknownKeyException";
inline constexpr std::string_view internalInconsistencyException =
    "NSInternalInconsistencyException";

// Raises NSInvalidArgumentException with the given reason.
[[noreturn]] void raiseInvalidArgument(std::string reason);
// Raises NSInvalidArgumentException, "-[Class selector]: unrecognized selector sent to instance".
[[noreturn]] void raiseUnrecognizedSelector(std::string_view className, std::string_view selector);
// Raises NSInvalidArgumentException, "+[Class selector]: unrecognized selector sent to class".
[[noreturn]] void raiseUnrecognizedClassSelector(std::string_view className,
                                                 std::string_view selector);
// Raises NSUnknownKeyException, "[<Class> valueForUndefinedKey:]: this class is not key value
// coding-compliant for the key key."; for writing, "[<Class> setValue:forUndefinedKey:]: ...". For
// an object, the class is printed with its address: "[<PSSpecifier 0x55d0c8e0> ...".
[[noreturn]] void raiseUndefinedKey(std::string_view className, std::string_view key, bool writing);

}  // namespace platform
