#include "platform/foundation/propertylist/PropertyListChecks.h"

#include <array>
#include <cstdio>

#include "platform/foundation/objects/Object.h"
#include "platform/foundation/propertylist/PropertyListTypes.h"

namespace platform::property_list {

std::string whyNot(const Value& value) {
  const auto object = value.asObject();
  if (!object) return "nothing, which a property list cannot hold";
  return "an object of class " + std::string(object->className());
}

std::string whyNot(const utf::Decoded& character) {
  if (character.length == 0) return "bytes that are not UTF-8";
  std::array<char, 16> name{};
  std::snprintf(name.data(), name.size(), "U+%04X", static_cast<unsigned>(character.scalar));
  const bool surrogate = utf::isSurrogate(character.scalar);
  return std::string("text with ") + (surrogate ? "the lone surrogate " : "") + name.data() +
         ", which a property list cannot hold";
}

std::string whyNot(Date date) {
  return date.secondsSinceReferenceDate != date.secondsSinceReferenceDate
             ? "a date that is not a number"
             : "a date outside the years 1 to 9999";
}

std::string tooDeep() {
  return "containers nested more than " + std::to_string(PropertyListLimits{}.depth) + " deep";
}

std::string tooMany() {
  return "more than " + std::to_string(PropertyListLimits{}.objects) + " values";
}

std::string tooLarge() {
  return "more than " + std::to_string(PropertyListLimits{}.bytes) + " bytes";
}

std::string pathStep(std::string_view key) {
  return "." + std::string(key);
}

std::string pathStep(std::size_t index) {
  return "[" + std::to_string(index) + "]";
}

void tidy(std::optional<std::string>& error) {
  if (!error) return;
  if (error->starts_with(".")) error->erase(0, 1);
  if (error->starts_with(": ")) error->replace(0, 2, "the root: ");
}

}  // namespace platform::property_list
