#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/text/Utf.h"
#include "platform/foundation/values/Value.h"

// What both writers say about a value that no property list can hold, or that the readers would
// refuse: what is written can be read.
namespace platform::property_list {

std::string whyNot(const Value& value);  // an object, or nothing
std::string whyNot(const utf::Decoded& character);
std::string whyNot(Date date);
std::string tooDeep();
std::string tooMany();
std::string tooLarge();

// One step of a key path: ".key" or "[2]".
std::string pathStep(std::string_view key);
std::string pathStep(std::size_t index);
// From the steps and the reason as they were joined, ".items[2].icon: why", to what people read.
void tidy(std::optional<std::string>& error);

}  // namespace platform::property_list
