#include "modules/MutableList.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "platform/foundation/values/Exception.h"

namespace zentrova {

using platform::Value;

namespace {

bool isBelow(std::int64_t index, std::size_t count) {
  return index >= 0 && static_cast<std::uint64_t>(index) < count;
}

// `count` is the number of valid places.
std::ptrdiff_t checked(std::int64_t index, std::size_t count, const char* operation) {
  if (isBelow(index, count)) return static_cast<std::ptrdiff_t>(index);
  throw platform::Exception(std::string(platform::rangeException),
                            std::string("*** -[__NSArrayM ") + operation + "]: index " +
                                std::to_string(index) + " beyond bounds for " +
                                std::to_string(count) + " places");
}

}  // namespace

bool hasElementAt(const MutableList& list, std::int64_t index) {
  return isBelow(index, list.size());
}

const Value& elementAt(const MutableList& list, std::int64_t index) {
  return *(list.begin() + checked(index, list.size(), "objectAtIndex:"));
}

Value takeElementAt(MutableList& list, std::int64_t index) {
  const auto place = list.begin() + checked(index, list.size(), "removeObjectAtIndex:");
  Value element = std::move(*place);
  list.erase(place);
  return element;
}

void insertElementAt(MutableList& list, std::int64_t index, Value element) {
  const auto place = checked(index, list.size() + 1, "insertObject:atIndex:");
  list.insert(list.begin() + place, std::move(element));
}

bool containsElement(const MutableList& list, const Value& element) {
  return std::ranges::find(list, element) != list.end();
}

std::optional<MutableList> mutableListOf(const Value& stored) {
  const auto* const array = stored.asArray();
  if (!array) return std::nullopt;
  return array->mutableCopy();
}

Value valueOf(const std::optional<MutableList>& list) {
  return list ? Value(platform::Array(*list)) : Value();
}

}  // namespace zentrova
