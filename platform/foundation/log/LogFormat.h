#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/foundation/values/Value.h"

namespace platform {

// Replaces each "%@" by the description of the next value ("(null)" for none), "%i", "%d", "%li"
// and "%lu" by its integer, "%x" by its integer in hexadecimal, "%s" by its text, "%f" and "%.2f"
// by its real and "%%" by "%". The unified log's "%{public}s" reads as "%s". A value that is
// missing counts as none; what is no directive stays as it stands. A value that is no
// number and no text gives its description everywhere.
std::string formatString(std::string_view format, std::initializer_list<Value> arguments);

}  // namespace platform
