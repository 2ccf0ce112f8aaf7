#include <cmath>

#include "platform/foundation/values/Collections.h"
#include "platform/foundation/values/Value.h"

namespace platform {
namespace {

bool integerEqualsReal(std::uint64_t magnitude, bool negative, double real) noexcept {
  if (std::signbit(real) != negative && magnitude != 0) return false;
  const double absolute = std::fabs(real);
  return absolute < 0x1p64 && std::trunc(absolute) == absolute &&
         static_cast<std::uint64_t>(absolute) == magnitude;
}

// Integers of either sign are compared exactly, with each other and with reals. Reals are compared
// as doubles.
bool numbersEqual(const Value& a, const Value& b) {
  const auto isReal = [](const Value& v) {
    return v.kind() == ValueKind::single || v.kind() == ValueKind::real;
  };
  if (isReal(a) && isReal(b)) {
    const double left = a.doubleValue();
    const double right = b.doubleValue();
    return left == right || (a.kind() == b.kind() && std::isnan(left) && std::isnan(right) &&
                             std::signbit(left) == std::signbit(right));
  }
  if (isReal(a)) return numbersEqual(b, a);
  const bool negative = a.kind() != ValueKind::unsignedInteger && a.integerValue() < 0;
  if (isReal(b)) {
    const std::uint64_t bits = a.unsignedIntegerValue();
    return integerEqualsReal(negative ? 0 - bits : bits, negative, b.doubleValue());
  }
  const bool otherNegative = b.kind() != ValueKind::unsignedInteger && b.integerValue() < 0;
  return negative == otherNegative && a.unsignedIntegerValue() == b.unsignedIntegerValue();
}

}  // namespace

bool operator==(const Value& a, const Value& b) {
  if (a.isNumber() && b.isNumber()) return numbersEqual(a, b);
  if (a.kind() != b.kind()) return false;
  switch (a.kind()) {
    case ValueKind::string:
      return a.stringView() == b.stringView();
    case ValueKind::data:
      return *a.asData() == *b.asData();
    case ValueKind::date:
      return *a.asDate() == *b.asDate();
    case ValueKind::array:
      return *a.asArray() == *b.asArray();
    case ValueKind::dictionary:
      return *a.asDictionary() == *b.asDictionary();
    case ValueKind::object:
      return a.asObject() == b.asObject();
    default:
      return true;
  }
}

}  // namespace platform
