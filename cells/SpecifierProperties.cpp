#include "cells/SpecifierProperties.h"

namespace zentrova {

platform::Value propertyOf(const std::shared_ptr<platform::PSSpecifier>& specifier,
                           const char* key) {
  return specifier ? specifier->propertyForKey(key) : platform::Value();
}

bool isTrue(const platform::Value& value) {
  return (value.isNumber() || value.isString()) && value.boolValue();
}

std::optional<double> realOf(const platform::Value& value) {
  if (!value.isNumber() && !value.isString()) return std::nullopt;
  return value.doubleValue();
}

}  // namespace zentrova
