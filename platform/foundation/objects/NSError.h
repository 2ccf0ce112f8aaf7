#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/objects/Object.h"

namespace platform {

inline constexpr std::string_view NSURLErrorDomain = "NSURLErrorDomain";
inline constexpr std::int64_t NSURLErrorUnknown = -1;
inline constexpr std::int64_t NSURLErrorCancelled = -999;

// The reason of a failure. Immutable. Threads: any.
class NSError : public Object {
  PLATFORM_CLASS(NSError)

 public:
  static std::shared_ptr<NSError> errorWithDomain(std::string_view domain, std::int64_t code,
                                                  std::string_view localizedDescription);

  const std::string& domain() const noexcept { return _domain; }
  std::int64_t code() const noexcept { return _code; }
  const std::string& localizedDescription() const noexcept { return _localizedDescription; }

  // Returns "Error Domain=NSURLErrorDomain Code=-1 "text" UserInfo={NSLocalizedDescription=text}".
  std::string description() const override;

 private:
  std::string _domain;
  std::int64_t _code = 0;
  std::string _localizedDescription;
};

}  // namespace platform
