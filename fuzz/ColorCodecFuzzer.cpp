// Decodes any text as a colour. Unless it is the name of a system colour, its components are from 0
// to 1, a leading "#" does not change it, and encoding and decoding it returns the same colour.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "appearance/ColorCodec.h"
#include "fuzz/FuzzChecks.h"

namespace {

using fuzzing::require;
using platform::ColorComponents;

ColorComponents componentsOf(std::string_view text) {
  const auto color = zentrova::colorFromValueString(text);
  require(color != nullptr, "no colour");
  return color->resolved(platform::UserInterfaceStyle::light);
}

void checkWritten(const ColorComponents& color) {
  const std::string text = zentrova::valueStringFromColor(color);
  require(text.size() == 8, "written as " + text);
  require(text.find_first_not_of("0123456789ABCDEF") == std::string::npos, "written as " + text);
  require(componentsOf(text) == color, "read back as another colour than " + text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const auto color = zentrova::colorFromValueString(text);
  require(color != nullptr, "no colour");
  if (color->systemName()) return 0;
  const ColorComponents components = componentsOf(text);
  for (const double value : {components.red, components.green, components.blue, components.alpha}) {
    require(value >= 0 && value <= 1, "a component outside of 0 to 1");
  }
  require(componentsOf("#" + text) == components, "a # in front changes the colour");
  checkWritten(components);
  return 0;
}
