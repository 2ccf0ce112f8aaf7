#pragma once

#include <optional>
#include <string>

#include "platform/foundation/values/Value.h"

namespace platform {

// The value of a key in the preference file of a domain. None if the file or the key is missing or
// unreadable, or if the domain is not valid.
Value valueInDomain(const std::string& domain, const std::string& key);

// Sets the value (none removes the key) and rewrites the whole file. Returns the reason if that
// failed. A file that exists but cannot be read is not changed.
std::optional<std::string> setValueInDomain(const std::string& domain, const std::string& key,
                                            const Value& value);

}  // namespace platform
