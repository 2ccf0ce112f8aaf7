#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/text/Utf.h"
#include "platform/foundation/values/Value.h"

// Errors that both writers report for values that a property list cannot hold or that the readers
// would reject. Everything written can be read.
namespace platform::property_list {

std::string whyNot(const Value& value);  // for an object or none
std::string whyNot(const utf::Decoded& character);
std::string whyNot(Date date);
std::string tooDeep();
std::string tooMany();
std::string tooLarge();

// Returns one step of a key path: ".key" or "[2]".
std::string pathStep(std::string_view key);
std::string pathStep(std::size_t index);
// Turns the joined steps and reason, ".items[2].icon: why", into the final message.
void tidy(std::optional<std::string>& error);

}  // namespace platform::property_list
