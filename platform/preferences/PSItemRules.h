#pragma once

#include <optional>
#include <string>

#include "platform/foundation/objects/Object.h"
#include "platform/foundation/values/Collections.h"

namespace platform {

// The problem with the values of an item's keys: a value of the wrong type, or values that
// contradict each other. Empty if there is none.
std::optional<std::string> problemOfItemValues(const Dictionary& item);

// The problem with the names that an item refers to: an action, a getter or a setter that the
// target does not have, or a page or cell class that does not exist. Empty if there is none, and
// for a disabled row, which uses none of them. Operations are not checked without a target.
std::optional<std::string> problemOfItemReferences(const Dictionary& item, Object* target);

// The problem with a cell class: it does not exist, or is not a cell class. Empty if there is none.
std::optional<std::string> problemOfCellClass(const std::string& className);

// The type of a value, for messages: "a string", "a number".
std::string kindForPeople(const Value& value);

}  // namespace platform
