#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/foundation/values/Collections.h"
#include "platform/foundation/values/Value.h"

namespace zentrova {

// The lists that the module pages edit. An index out of bounds raises NSRangeException, like the
// platform's mutable array.
using MutableList = std::vector<platform::Value>;

bool hasElementAt(const MutableList& list, std::int64_t index);
const platform::Value& elementAt(const MutableList& list, std::int64_t index);
// Removes the element and returns it.
platform::Value takeElementAt(MutableList& list, std::int64_t index);
void insertElementAt(MutableList& list, std::int64_t index, platform::Value element);
bool containsElement(const MutableList& list, const platform::Value& element);

// A mutable copy of a stored array. Nothing if the value is not an array.
std::optional<MutableList> mutableListOf(const platform::Value& stored);
// The list as a value; none if there is no list.
platform::Value valueOf(const std::optional<MutableList>& list);

}  // namespace zentrova
