// Reads any bytes as XML. They are refused with a position, or survive a round trip: the same value
// and the same bytes, whether or not the data was decoded in between.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "fuzz/FuzzChecks.h"
#include "fuzz/PropertyListChecks.h"
#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/propertylist/PropertyListBinary.h"

namespace {

using fuzzing::require;
using platform::PropertyListResult;

void checkRoundTrip(const PropertyListResult& result) {
  const auto text = platform::writeXmlPropertyList(result.value);
  require(!text.error, "what was read cannot be written: " + text.error.value_or(""));
  const auto kept = std::make_shared<const std::string>(text.bytes);
  const PropertyListResult back = platform::readSharedPropertyList(*kept, kept);
  require(!back.error,
          "what was written cannot be read: " + (back.error ? back.error->text() : ""));
  require(platform::writeXmlPropertyList(back.value).bytes == text.bytes, "written differently");
  require(back.value == result.value, "read back as something else");
  const auto binary = platform::writeBinaryPropertyList(result.value);
  require(!binary.error, "no binary form: " + binary.error.value_or(""));
  const PropertyListResult again = platform::readPropertyList(binary.bytes);
  require(!again.error, "the binary form cannot be read");
  require(again.value == result.value, "the binary form is read as something else");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  if (bytes.starts_with("bplist")) return 0;
  const PropertyListResult result = platform::readPropertyList(bytes);
  if (result.error) {
    fuzzing::checkRefusal(result, size);
  } else {
    checkRoundTrip(result);
  }
  return 0;
}
