#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/foundation/values/Collections.h"
#include "platform/foundation/values/Value.h"

namespace zentrova {

// The lists that the module pages edit. An index beyond the list raises NSRangeException, as the
// platform's mutable array does.
using MutableList = std::vector<platform::Value>;

bool hasElementAt(const MutableList& list, std::int64_t index);
const platform::Value& elementAt(const MutableList& list, std::int64_t index);
// Takes the element out and gives it.
platform::Value takeElementAt(MutableList& list, std::int64_t index);
void insertElementAt(MutableList& list, std::int64_t index, platform::Value element);
bool containsElement(const MutableList& list, const platform::Value& element);

// A mutable copy of a stored list; nothing where the value is no list.
std::optional<MutableList> mutableListOf(const platform::Value& stored);
// The list as a value; none where there is no list.
platform::Value valueOf(const std::optional<MutableList>& list);

}  // namespace zentrova
