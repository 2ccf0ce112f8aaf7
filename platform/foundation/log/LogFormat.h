#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/foundation/values/Value.h"

namespace platform {

// Formats like the platform. "%@" prints the description of the next value ("(null)" for none),
// "%i", "%d", "%li" and "%lu" its integer, "%x" its integer in hexadecimal, "%s" its text, "%f" and
// "%.2f" its real, and "%%" prints "%". "%{public}s" of the unified log is the same as "%s". A
// missing value counts as none. Unknown directives are copied. A value that is neither a number nor
// text prints its description for every directive.
std::string formatString(std::string_view format, std::initializer_list<Value> arguments);

}  // namespace platform
