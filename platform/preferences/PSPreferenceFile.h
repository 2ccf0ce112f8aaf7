#pragma once

#include <optional>
#include <string>

#include "platform/foundation/values/Value.h"

namespace platform {

// The value under a key in the preference file of a domain; none where the file or the key is
// absent or unreadable, or the text is no domain.
Value valueInDomain(const std::string& domain, const std::string& key);

// Sets it (none removes it) and rewrites the whole file. The reason where that was not done; a file
// that is there but cannot be read stays as it is.
std::optional<std::string> setValueInDomain(const std::string& domain, const std::string& key,
                                            const Value& value);

}  // namespace platform
