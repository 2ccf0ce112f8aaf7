#include <cmath>
#include <limits>

#include "platform/foundation/objects/Object.h"
#include "platform/foundation/text/NumberText.h"
#include "platform/foundation/text/Utf.h"
#include "platform/foundation/values/Collections.h"
#include "platform/foundation/values/Exception.h"
#include "platform/foundation/values/Value.h"

namespace platform {
namespace {

// Truncates towards zero. Clamps values out of range. NaN becomes 0.
template <class Integer>
Integer truncate(double value) noexcept {
  // Both bounds are powers of two (or zero), which a double represents exactly.
  constexpr double below = static_cast<double>(std::numeric_limits<Integer>::min());
  constexpr double above =
      2.0 * static_cast<double>(std::uint64_t{1} << (std::numeric_limits<Integer>::digits - 1));
  if (std::isnan(value)) return 0;
  if (value <= below) return std::numeric_limits<Integer>::min();
  if (value >= above) return std::numeric_limits<Integer>::max();
  return static_cast<Integer>(value);
}

}  // namespace

void Value::raiseSelector(std::string_view selector) const {
  switch (kind()) {
    case ValueKind::string:
      raiseUnrecognizedSelector("__NSCFString", selector);
    case ValueKind::data:
      raiseUnrecognizedSelector("NSConcreteData", selector);
    case ValueKind::date:
      raiseUnrecognizedSelector("__NSDate", selector);
    case ValueKind::array:
      raiseUnrecognizedSelector("__NSCFArray", selector);
    case ValueKind::dictionary:
      raiseUnrecognizedSelector("__NSCFDictionary", selector);
    case ValueKind::object:
      raiseUnrecognizedSelector(asObject()->className(), selector);
    case ValueKind::boolean:
      raiseUnrecognizedSelector("__NSCFBoolean", selector);
    default:
      raiseUnrecognizedSelector("__NSCFNumber", selector);
  }
}

double Value::numericValue() const noexcept {
  switch (kind()) {
    case ValueKind::boolean:
      return payload<bool>() ? 1.0 : 0.0;
    case ValueKind::integer:
      return static_cast<double>(payload<std::int64_t>());
    case ValueKind::unsignedInteger:
      return static_cast<double>(payload<std::uint64_t>());
    case ValueKind::single:
      return static_cast<double>(payload<float>());
    case ValueKind::real:
      return payload<double>();
    default:
      return 0.0;
  }
}

std::int32_t Value::intValue() const {
  switch (kind()) {
    case ValueKind::none:
      return 0;
    case ValueKind::boolean:
      return payload<bool>() ? 1 : 0;
    case ValueKind::integer:
    case ValueKind::unsignedInteger:
      return static_cast<std::int32_t>(payload<std::int64_t>());
    case ValueKind::single:
    case ValueKind::real:
      return truncate<std::int32_t>(numericValue());
    case ValueKind::string:
      return static_cast<std::int32_t>(
          number_text::leadingInteger(stringView(), std::numeric_limits<std::int32_t>::min(),
                                      std::numeric_limits<std::int32_t>::max()));
    default:
      raiseSelector("intValue");
  }
}

std::int64_t Value::integerValue() const {
  switch (kind()) {
    case ValueKind::none:
      return 0;
    case ValueKind::boolean:
      return payload<bool>() ? 1 : 0;
    case ValueKind::integer:
    case ValueKind::unsignedInteger:
      return payload<std::int64_t>();
    case ValueKind::single:
    case ValueKind::real:
      return truncate<std::int64_t>(numericValue());
    case ValueKind::string:
      return number_text::leadingInteger(stringView(), std::numeric_limits<std::int64_t>::min(),
                                         std::numeric_limits<std::int64_t>::max());
    default:
      raiseSelector("integerValue");
  }
}

std::uint64_t Value::unsignedIntegerValue() const {
  switch (kind()) {
    case ValueKind::none:
      return 0;
    case ValueKind::boolean:
      return payload<bool>() ? 1 : 0;
    case ValueKind::integer:
    case ValueKind::unsignedInteger:
      return payload<std::uint64_t>();
    case ValueKind::single:
    case ValueKind::real:
      return truncate<std::uint64_t>(numericValue());
    default:
      raiseSelector("unsignedIntegerValue");
  }
}

float Value::floatValue() const {
  if (kind() == ValueKind::integer) return static_cast<float>(payload<std::int64_t>());
  if (kind() == ValueKind::unsignedInteger) return static_cast<float>(payload<std::uint64_t>());
  if (isNone() || isNumber()) return static_cast<float>(numericValue());
  if (isString()) return static_cast<float>(number_text::leadingReal(stringView()));
  raiseSelector("floatValue");
}

double Value::doubleValue() const {
  if (isNone() || isNumber()) return numericValue();
  if (isString()) return number_text::leadingReal(stringView());
  raiseSelector("doubleValue");
}

bool Value::boolValue() const {
  // NaN is true, because it is not zero.
  if (isNone() || isNumber()) return numericValue() != 0.0;
  if (isString()) return number_text::leadingTruth(stringView());
  raiseSelector("boolValue");
}

std::size_t Value::length() const {
  if (isNone()) return 0;
  if (isString()) return utf::codeUnits(stringView());
  if (const Data* data = asData()) return data->size();
  raiseSelector("length");
}

bool Value::isEqualToString(std::string_view utf8) const {
  if (isNone()) return false;
  if (isString()) return stringView() == utf8;
  raiseSelector("isEqualToString:");
}

}  // namespace platform
