#pragma once

#include <optional>
#include <string>

#include "platform/foundation/objects/Object.h"
#include "platform/foundation/values/Collections.h"

namespace platform {

// What is wrong with the values of an item's keys: a value of another type than the key takes, or
// values that do not go together. Empty where nothing is.
std::optional<std::string> problemOfItemValues(const Dictionary& item);

// What is wrong with what an item refers to by name: an action, a getter or a setter that the
// target does not offer, a class of a page or a cell that is not there. Empty where nothing is, and
// for a disabled row, which reaches none of them. Without a target its operations are not checked.
std::optional<std::string> problemOfItemReferences(const Dictionary& item, Object* target);

// What is wrong with a class that is to make cells: it is not there, or makes no cells.
std::optional<std::string> problemOfCellClass(const std::string& className);

// "a text", "a number": what a value is, for messages.
std::string kindForPeople(const Value& value);

}  // namespace platform
