#include "platform/preferences/PSItemRules.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "platform/foundation/objects/Process.h"
#include "platform/preferences/PSCellType.h"
#include "platform/preferences/PSKeyboard.h"

namespace platform {

namespace {

enum class Takes : std::uint8_t { text, number, yesOrNo, list, dictionary };

struct KeyRule {
  std::string_view key;
  Takes takes;
};

constexpr std::array<KeyRule, 26> keyRules{{
    {"cell", Takes::text},
    {"label", Takes::text},
    {"title", Takes::text},
    {"id", Takes::text},
    {"key", Takes::text},
    {"defaults", Takes::text},
    {"action", Takes::text},
    {"get", Takes::text},
    {"set", Takes::text},
    {"detail", Takes::text},
    {"cellClass", Takes::text},
    {"icon", Takes::text},
    {"footerText", Takes::text},
    {"keyboard", Takes::text},
    {"placeholder", Takes::text},
    {"PostNotification", Takes::text},
    {"min", Takes::number},
    {"max", Takes::number},
    {"height", Takes::number},
    {"segmentCount", Takes::number},
    {"showValue", Takes::yesOrNo},
    {"isSegmented", Takes::yesOrNo},
    {"isContinuous", Takes::yesOrNo},
    {"enabled", Takes::yesOrNo},
    {"validValues", Takes::list},
    {"validTitles", Takes::list},
}};

bool accepts(Takes takes, const Value& value) {
  switch (takes) {
    case Takes::text:
      return value.isString();
    case Takes::number:
      return value.isNumber() && value.kind() != ValueKind::boolean;
    case Takes::yesOrNo:
      return value.isNumber();
    case Takes::list:
      return value.asArray() != nullptr;
    case Takes::dictionary:
      return value.asDictionary() != nullptr;
  }
  return false;
}

std::string_view nameOf(Takes takes) {
  constexpr std::array<std::string_view, 5> names{"a string", "a number", "a boolean", "an array",
                                                  "a dictionary"};
  return names[static_cast<std::size_t>(takes)];
}

std::string inQuotes(std::string_view text) {
  std::string result(1, '"');
  result.append(text).push_back('"');
  return result;
}

std::optional<std::string> checkType(const Dictionary& item, const KeyRule& rule) {
  const Value* value = item.find(rule.key);
  if (!value || accepts(rule.takes, *value)) return std::nullopt;
  return inQuotes(rule.key) + " must be " + std::string(nameOf(rule.takes)) + ", not " +
         kindForPeople(*value);
}

std::optional<std::string> checkConfirmation(const Dictionary& item) {
  if (auto problem = checkType(item, {"confirmation", Takes::dictionary})) return problem;
  const Value confirmation = item.valueForKey("confirmation");
  if (!confirmation) return std::nullopt;
  for (const auto* key : {"title", "prompt", "okTitle", "cancelTitle"}) {
    if (auto problem = checkType(*confirmation.asDictionary(), {key, Takes::text})) {
      return "in \"confirmation\", " + *problem;
    }
  }
  return std::nullopt;
}

std::optional<std::string> checkCell(const Dictionary& item) {
  const Value name = item.valueForKey("cell");
  if (!name) return "\"cell\" is missing (expected one of " + cellTypeNames() + ")";
  if (cellTypeNamed(*name.asString())) return std::nullopt;
  return "unknown cell " + inQuotes(*name.asString()) + " (expected one of " + cellTypeNames() +
         ")";
}

std::optional<std::string> checkTitles(const Array& titles, std::size_t valueCount) {
  for (const Value& title : titles) {
    if (!title.isString()) {
      return "\"validTitles\" must contain only strings, not " + kindForPeople(title);
    }
  }
  if (titles.size() == valueCount) return std::nullopt;
  return "\"validTitles\" has " + std::to_string(titles.size()) +
         " elements, \"validValues\" has " + std::to_string(valueCount);
}

std::optional<std::string> checkChoices(const Dictionary& item) {
  const Value values = item.valueForKey("validValues");
  const Value titles = item.valueForKey("validTitles");
  const std::size_t valueCount = values ? values.asArray()->size() : 0;
  if (titles) {
    if (auto problem = checkTitles(*titles.asArray(), valueCount)) return problem;
  }
  const PSCellType type = *cellTypeNamed(*item.valueForKey("cell").asString());
  const bool isChoice = type == PSSegmentCell || type == PSLinkListCell;
  if (isChoice && valueCount == 0) {
    return "\"validValues\" is missing or empty";
  }
  return std::nullopt;
}

std::optional<std::string> checkSlider(const Dictionary& item) {
  const Value minimum = item.valueForKey("min");
  const Value maximum = item.valueForKey("max");
  const float low = minimum ? minimum.floatValue() : 0.0F;
  const float high = maximum ? maximum.floatValue() : 1.0F;
  const bool isRange = std::isfinite(low) && std::isfinite(high) && low < high;
  if (cellTypeNamed(*item.valueForKey("cell").asString()) == PSSliderCell && !isRange) {
    return "\"min\" must be below \"max\" (default: 0 and 1)";
  }
  const Value count = item.valueForKey("segmentCount");
  if (count && count.integerValue() < 1) return "\"segmentCount\" must be 1 or more";
  return std::nullopt;
}

std::optional<std::string> checkPresentation(const Dictionary& item) {
  const Value height = item.valueForKey("height");
  if (height && !(height.doubleValue() > 0 && height.doubleValue() < 10'000)) {
    return "\"height\" must be above 0 and below 10000 points";
  }
  const Value keyboard = item.valueForKey("keyboard");
  if (keyboard && !keyboardNamed(*keyboard.asString())) {
    return "unknown keyboard " + inQuotes(*keyboard.asString()) + " (expected one of " +
           keyboardNames() + ")";
  }
  return std::nullopt;
}

// Checks an operation that the row sends to its target.
std::optional<std::string> checkSelector(const Dictionary& item, std::string_view key,
                                         std::string_view what, Object* target) {
  const Value selector = item.valueForKey(key);
  if (!selector || !target || target->respondsToSelector(*selector.asString())) {
    return std::nullopt;
  }
  return std::string(what) + " " + inQuotes(*selector.asString()) + " does not exist in " +
         std::string(target->className());
}

std::optional<std::string> checkDetail(const Dictionary& item) {
  const Value name = item.valueForKey("detail");
  if (!name) return std::nullopt;
  const Class* found = NSClassFromString(*name.asString());
  if (!found) return "the page class " + inQuotes(*name.asString()) + " does not exist";
  if (found->isSubclassOf("UIViewController")) return std::nullopt;
  return "the class " + inQuotes(*name.asString()) +
         " is not a page (no subclass of UIViewController)";
}

}  // namespace

std::string kindForPeople(const Value& value) {
  if (value.kind() == ValueKind::boolean) return "a boolean";
  if (value.isNumber()) return "a number";
  if (value.isString()) return "a string";
  if (value.asArray()) return "an array";
  if (value.asDictionary()) return "a dictionary";
  if (value.asData()) return "data";
  if (value.asDate()) return "a date";
  return value ? "an object" : "nothing";
}

std::optional<std::string> problemOfItemValues(const Dictionary& item) {
  for (const KeyRule& rule : keyRules) {
    if (auto problem = checkType(item, rule)) return problem;
  }
  for (const auto check :
       {&checkCell, &checkConfirmation, &checkChoices, &checkSlider, &checkPresentation}) {
    if (auto problem = check(item)) return problem;
  }
  return std::nullopt;
}

std::optional<std::string> problemOfCellClass(const std::string& className) {
  const Class* found = NSClassFromString(className);
  if (!found) return "the cell class " + inQuotes(className) + " does not exist";
  if (found->isSubclassOf("PSTableCell")) return std::nullopt;
  return "the class " + inQuotes(className) +
         " is not a settings cell (no subclass of PSTableCell)";
}

std::optional<std::string> problemOfItemReferences(const Dictionary& item, Object* target) {
  const Value enabled = item.valueForKey("enabled");
  if (enabled && !enabled.boolValue()) return std::nullopt;
  if (auto problem = checkSelector(item, "action", "the action", target)) return problem;
  if (auto problem = checkSelector(item, "get", "the getter", target)) return problem;
  if (auto problem = checkSelector(item, "set", "the setter", target)) return problem;
  if (auto problem = checkDetail(item)) return problem;
  const Value cellClass = item.valueForKey("cellClass");
  return cellClass ? problemOfCellClass(std::string(*cellClass.asString())) : std::nullopt;
}

}  // namespace platform
