#pragma once

#include <memory>
#include <optional>

#include "platform/preferences/PSSpecifier.h"

// Read a row's properties for a cell. Without a specifier every property is absent, and so is a
// value of the wrong type.
namespace zentrova {

platform::Value propertyOf(const std::shared_ptr<platform::PSSpecifier>& specifier,
                           const char* key);
// The truth of a number or a string; false for any other type.
bool isTrue(const platform::Value& value);
// A number or a string as a real; nothing for any other type.
std::optional<double> realOf(const platform::Value& value);

}  // namespace zentrova
