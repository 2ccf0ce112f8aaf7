// Reads any bytes after the magic number of the binary form. They are refused, or read within the
// limits and survive a round trip in the binary form.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/FuzzChecks.h"
#include "fuzz/PropertyListChecks.h"
#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/propertylist/PropertyListBinary.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using fuzzing::require;
  std::string bytes(reinterpret_cast<const char*>(data), size);
  if (!bytes.starts_with("bplist00")) bytes.insert(0, "bplist00");
  platform::PropertyListLimits limits;
  // Shared objects count each time, and a comparison visits them each time.
  limits.objects = 10'000;
  limits.bytes = std::size_t{1} << 20U;
  const auto result = platform::readPropertyList(bytes, limits);
  if (result.error) {
    fuzzing::checkRefusal(result, bytes.size());
    return 0;
  }
  const auto binary = platform::writeBinaryPropertyList(result.value);
  require(!binary.error, "what was read cannot be written: " + binary.error.value_or(""));
  const auto back = platform::readPropertyList(binary.bytes);
  require(!back.error, "what was written cannot be read");
  require(back.value == result.value, "read back as something else");
  const auto xml = platform::writeXmlPropertyList(result.value);
  if (xml.error) return 0;
  require(!platform::readPropertyList(xml.bytes).error, "the XML form cannot be read");
  return 0;
}
