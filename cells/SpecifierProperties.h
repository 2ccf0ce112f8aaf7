#pragma once

#include <memory>
#include <optional>

#include "platform/preferences/PSSpecifier.h"

// How the cells read a row's properties: without a specifier each is absent, and a value of a kind
// that the property does not take counts as absent too.
namespace zentrova {

platform::Value propertyOf(const std::shared_ptr<platform::PSSpecifier>& specifier,
                           const char* key);
// What a number or a text says; false for any other kind.
bool isTrue(const platform::Value& value);
// The same as a real; none for any other kind.
std::optional<double> realOf(const platform::Value& value);

}  // namespace zentrova
