#include "benchmarks/PropertyListSamples.h"

#include <cstdint>
#include <random>
#include <utility>

#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/propertylist/PropertyListBinary.h"

namespace benchmarks {
namespace {

using platform::Array;
using platform::Data;
using platform::Dictionary;
using platform::Value;

constexpr unsigned seed = 20260102;
constexpr std::size_t imageSize = 4U * 1024 * 1024;

std::string word(std::mt19937& random, std::size_t length) {
  std::string text(length, 'a');
  for (char& c : text) c = static_cast<char>('a' + random() % 26);
  return text;
}

// Returns mostly colours, switches and numbers, like a settings file.
Value setting(std::mt19937& random) {
  switch (random() % 6) {
    case 0:
      return random() % 2 == 0;
    case 1:
      return static_cast<std::int64_t>(random() % 1000);
    case 2:
      return static_cast<double>(random() % 1000) / 1000.0;
    case 3:
      return "#" + std::to_string(100000 + random() % 900000) + ":0." +
             std::to_string(random() % 100);
    case 4:
      return "com.example." + word(random, 10);
    default:
      return word(random, 6 + random() % 20);
  }
}

std::vector<std::pair<std::string, Value>> settings(std::mt19937& random, std::size_t count) {
  std::vector<std::pair<std::string, Value>> entries;
  entries.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    entries.emplace_back(word(random, 5) + "Setting" + std::to_string(i), setting(random));
  }
  return entries;
}

Sample sampleOf(std::string name, Value value) {
  Sample sample{std::move(name), std::move(value), {}, {}};
  sample.xml = platform::writeXmlPropertyList(sample.value).bytes;
  sample.binary = platform::writeBinaryPropertyList(sample.value).bytes;
  return sample;
}

}  // namespace

Dictionary smallPreferences() {
  std::mt19937 random(seed);
  auto entries = settings(random, 58);
  std::vector<Value> order;
  for (int i = 0; i < 12; ++i) order.emplace_back("com.example.module." + word(random, 8));
  entries.emplace_back("moduleOrder", Array(std::move(order)));
  entries.emplace_back("favourites", Array{"com.example.a", "com.example.b", "com.example.c"});
  return Dictionary(std::move(entries));
}

Dictionary imagePreferences() {
  std::mt19937 random(seed);
  std::vector<std::uint8_t> bytes(imageSize);
  for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
  return smallPreferences().with("backgroundImage", Data(std::move(bytes)));
}

Dictionary widePreferences(std::size_t keys) {
  std::mt19937 random(seed);
  return Dictionary(settings(random, keys));
}

Value deepPreferences(std::size_t levels) {
  Value value = "innermost";
  for (std::size_t i = 0; i < levels; ++i) {
    value = Dictionary{{"level", static_cast<std::int64_t>(i)}, {"next", value}};
  }
  return value;
}

std::vector<Sample> samples() {
  std::vector<Sample> all;
  all.push_back(sampleOf("small", smallPreferences()));
  all.push_back(sampleOf("image", imagePreferences()));
  all.push_back(sampleOf("wide", widePreferences(200'000)));
  all.push_back(sampleOf("deep", deepPreferences(500)));
  return all;
}

}  // namespace benchmarks
