// If both our reader and Python's plistlib accept a list, both read the same value.
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "fuzz/FuzzChecks.h"
#include "fuzz/PythonPeer.h"
#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/text/NumberText.h"

namespace {

using platform::Value;
using platform::ValueKind;

template <class Bytes>
void appendHexadecimal(std::string& out, const Bytes& bytes) {
  static constexpr char digits[] = "0123456789abcdef";
  for (const auto item : bytes) {
    const auto byte = static_cast<unsigned char>(item);
    out.push_back(digits[byte >> 4U]);
    out.push_back(digits[byte & 15U]);
  }
}

void appendReal(std::string& out, double value) {
  if (std::isnan(value)) {
    out += "rnan";
    return;
  }
  char text[24];
  std::snprintf(text, sizeof text, "r%016llx",
                static_cast<unsigned long long>(std::bit_cast<std::uint64_t>(value + 0.0)));
  out += text;
}

// Appends the form that python_peer.py describes.
void appendCanonical(std::string& out, const Value& value) {
  switch (value.kind()) {
    case ValueKind::boolean:
      out += value.boolValue() ? "b1" : "b0";
      break;
    case ValueKind::integer:
      out += "i" + std::to_string(value.integerValue());
      break;
    case ValueKind::unsignedInteger:
      out += "i" + std::to_string(value.unsignedIntegerValue());
      break;
    case ValueKind::single:
    case ValueKind::real:
      appendReal(out, value.doubleValue());
      break;
    case ValueKind::string:
      out += "s";
      appendHexadecimal(out, *value.asString());
      break;
    case ValueKind::data:
      out += "d";
      appendHexadecimal(out, value.asData()->bytes());
      break;
    case ValueKind::date:
      out += "t" + platform::number_text::formatDate(value.asDate()->secondsSinceReferenceDate)
                       .value_or("year-none")
                       .substr(5, 14);
      break;
    case ValueKind::array:
      out += "[";
      for (const Value& item : *value.asArray()) appendCanonical(out, item);
      out += "]";
      break;
    default:
      out += "{";
      for (const auto& [key, item] : *value.asDictionary()) {
        out += "s";
        appendHexadecimal(out, key);
        out += ",";
        appendCanonical(out, item);
      }
      out += "}";
  }
  out += ",";
}

bool holdsBinaryDate(const Value& value) {
  if (value.asDate()) return true;
  if (const auto* array = value.asArray()) {
    for (const Value& item : *array) {
      if (holdsBinaryDate(item)) return true;
    }
  }
  if (const auto* dictionary = value.asDictionary()) {
    for (const auto& [key, item] : *dictionary) {
      if (holdsBinaryDate(item)) return true;
    }
  }
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static fuzzing::PythonPeer peer;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  // In XML, plistlib converts carriage returns to line feeds; the platform keeps them.
  const bool binary = bytes.starts_with("bplist");
  if (!binary && bytes.find('\r') != std::string_view::npos) return 0;
  platform::PropertyListLimits limits;
  limits.objects = 10'000;
  const auto result = platform::readPropertyList(bytes, limits);
  if (result.error) return 0;
  // plistlib rounds dates to microseconds.
  if (binary && holdsBinaryDate(result.value)) return 0;
  const std::string theirs = peer.read(bytes);
  if (theirs.empty()) return 0;
  std::string ours;
  appendCanonical(ours, result.value);
  fuzzing::require(ours == theirs, "we read\n" + ours + "\nplistlib reads\n" + theirs);
  return 0;
}
