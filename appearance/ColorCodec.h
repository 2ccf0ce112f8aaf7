#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/uikit/drawing/UIColor.h"

// Colour settings are stored as short strings, called colour value strings.
namespace zentrova {

// The colour of a colour value string; never an empty pointer. Eleven names ("red", "default", ...)
// are system colours. From any other string every "#" is removed, and the rest is read as a
// hexadecimal number: RGB, RRGGBB or RRGGBBAA. Leading white space and "0x" are skipped, reading
// stops at the first character that is not a digit, a number of more than 32 bits counts as
// FFFFFFFF, and a string without digits is transparent black.
// Threads: any.
std::shared_ptr<platform::UIColor> colorFromValueString(std::string_view text);

// The string that a colour is stored as: RRGGBBAA in upper case. Components are not clamped: one
// above 1 may take more digits, and a negative one is written as 64-bit two's complement.
// Threads: any.
std::string valueStringFromColor(const platform::ColorComponents& color);

}  // namespace zentrova
