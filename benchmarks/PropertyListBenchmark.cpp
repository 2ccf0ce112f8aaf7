// Measures the property list reader and writer against their peers and the machine's limits, on
// the same bytes in the same run, and prints the ratios.
//
//   zentrova-plist-benchmark            everything
//   zentrova-plist-benchmark parse      only parse; write, binary, linear likewise
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <plist/plist.h>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <unistd.h>

#include "benchmarks/PropertyListSamples.h"
#include "benchmarks/Report.h"
#include "benchmarks/Timing.h"
#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/text/Base64.h"
#ifdef ZENTROVA_GNUSTEP
#include "benchmarks/GNUstepPeer.h"
#endif

namespace benchmarks {
namespace {

using platform::PropertyListResult;
using platform::Value;

void check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "zentrova-plist-benchmark: %s\n", what);
  std::exit(1);
}

void parseWithLibplist(const std::string& bytes, bool binary) {
  plist_t list = nullptr;
  const auto size = static_cast<std::uint32_t>(bytes.size());
  (binary ? plist_from_bin : plist_from_xml)(bytes.data(), size, &list);
  check(list != nullptr, "libplist refuses the sample");
  plist_free(list);
}

void parseWithPugixml(const std::string& bytes) {
  pugi::xml_document document;
  check(static_cast<bool>(document.load_buffer(bytes.data(), bytes.size(), pugi::parse_default,
                                               pugi::encoding_utf8)),
        "pugixml refuses the sample");
  keep(document);
}

Value parse(const std::string& bytes) {
  PropertyListResult result = platform::readPropertyList(bytes);
  check(!result.error, "we refuse the sample");
  return std::move(result.value);
}

Value parseShared(const std::shared_ptr<const std::string>& text) {
  PropertyListResult result = platform::readSharedPropertyList(*text, text);
  check(!result.error, "we refuse the sample");
  return std::move(result.value);
}

// A sample file and a reused buffer, for read(2).
class SampleFile {
 public:
  explicit SampleFile(const std::string& bytes)
      : _path((std::filesystem::temp_directory_path() /
               ("zentrova-benchmark-" + std::to_string(getpid())))
                  .string()),
        _buffer(bytes.size()) {
    std::ofstream(_path, std::ios::binary) << bytes;
  }
  ~SampleFile() { std::filesystem::remove(_path); }
  SampleFile(const SampleFile&) = delete;
  SampleFile& operator=(const SampleFile&) = delete;

  void readAgain() { readInto(_buffer.data()); }
  std::shared_ptr<const std::string> readAnew() {
    auto text = std::make_shared<std::string>();
    text->resize(_buffer.size());
    readInto(text->data());
    return text;
  }

 private:
  void readInto(char* to) const {
    const int file = open(_path.c_str(), O_RDONLY | O_CLOEXEC);
    check(file >= 0, "the sample's file has gone");
    std::size_t size = 0;
    while (size < _buffer.size()) {
      const ssize_t part = read(file, to + size, _buffer.size() - size);
      check(part > 0, "the sample's file cannot be read");
      size += static_cast<std::size_t>(part);
    }
    close(file);
  }

  std::string _path;
  std::vector<char> _buffer;
};

void measurePython(const Sample& sample, bool binary) {
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("zentrova-python-" + std::to_string(getpid()));
  std::ofstream(path, std::ios::binary) << (binary ? sample.binary : sample.xml);
  const std::string script =
      "python3 -c \"import plistlib, time, sys\n"
      "sys.setrecursionlimit(10000)\n"
      "b = open('" +
      path.string() +
      "', 'rb').read()\n"
      "best = 1e9\n"
      "for i in range(5 if len(b) > 1e6 else 300):\n"
      "  t = time.perf_counter(); plistlib.loads(b); best = min(best, time.perf_counter() - t)\n"
      "print('  %-34s best %9.2f us' % ('CPython plistlib', best * 1e6))\" 2>/dev/null";
  std::fflush(stdout);
  if (std::system(script.c_str()) != 0) std::printf("  CPython plistlib refuses the sample\n");
  std::filesystem::remove(path);
}

// Adds GNUstep as a contender if it is installed and accepts the sample.
void addGNUstepParse([[maybe_unused]] std::vector<Contender>& contenders,
                     [[maybe_unused]] const std::string& bytes) {
#ifdef ZENTROVA_GNUSTEP
  if (!gnustepParses(bytes.data(), bytes.size())) {
    std::printf("\nGNUstep refuses the next sample\n");
    return;
  }
  contenders.push_back({"GNUstep", [&bytes] { keep(gnustepParses(bytes.data(), bytes.size())); }});
#endif
}

void addGNUstepWrite([[maybe_unused]] std::vector<Contender>& contenders,
                     [[maybe_unused]] const std::string& xml) {
#ifdef ZENTROVA_GNUSTEP
  const std::shared_ptr<void> list(gnustepOpen(xml.data(), xml.size()), gnustepRelease);
  check(list != nullptr, "GNUstep refuses the sample");
  contenders.push_back({"GNUstep", [list] { keep(gnustepWrites(list.get())); }});
#endif
}

void measureParse(const Sample& sample) {
  const auto shared = std::make_shared<const std::string>(sample.xml);
  std::vector<Contender> contenders = {
      {"here", [&] { keep(parse(sample.xml)); }},
      {"here, text shared", [&] { keep(parseShared(shared)); }},
      {"libplist", [&] { parseWithLibplist(sample.xml, false); }},
      {"pugixml, bare XML", [&] { parseWithPugixml(sample.xml); }}};
  addGNUstepParse(contenders, sample.xml);
  measure("parse " + sample.name + " XML, " + std::to_string(sample.xml.size()) + " bytes",
          contenders);
  measurePython(sample, false);
}

void measureBinary(const Sample& sample) {
  std::vector<Contender> contenders = {
      {"here", [&] { keep(parse(sample.binary)); }},
      {"libplist", [&] { parseWithLibplist(sample.binary, true); }}};
  addGNUstepParse(contenders, sample.binary);
  measure("parse " + sample.name + " binary, " + std::to_string(sample.binary.size()) + " bytes",
          contenders);
  measurePython(sample, true);
}

std::span<const std::uint8_t> bytesOf(const Value& image) {
  return image.asDictionary()->find("backgroundImage")->asData()->bytes();
}

void measureImage(const Sample& image) {
  SampleFile file(image.xml);
  const std::string plain = platform::base64::encode(bytesOf(image.value));
  const auto shared = std::make_shared<const std::string>(image.xml);
  const auto size = bytesOf(image.value).size() + platform::base64::decodeSlack;
  const auto out = std::make_unique<std::uint8_t[]>(size);
  measure("image XML, data decoded",
          {{"bare base64 decode, fresh memory",
            [&] {
              const std::unique_ptr<std::uint8_t[]> fresh(new std::uint8_t[size]);
              platform::base64::decode(plain, fresh.get());
              keep(fresh[0]);
            }},
           {"bare base64 decode, memory again",
            [&] {
              platform::base64::decode(plain, out.get());
              keep(out[0]);
            }},
           {"here, with the data decoded", [&] { keep(bytesOf(parseShared(shared))); }}});
  measure("image XML, data not asked for",
          {{"read(2) into fresh memory", [&] { keep(file.readAnew()); }},
           {"read(2) into memory again", [&] { file.readAgain(); }},
           {"here, parse only", [&] { keep(parseShared(shared)); }},
           {"here, read(2) and parse", [&] { keep(parseShared(file.readAnew())); }}});
}

void measureWrite(const Sample& sample) {
  plist_t list = nullptr;
  plist_from_xml(sample.xml.data(), static_cast<std::uint32_t>(sample.xml.size()), &list);
  std::string copy;
  std::vector<Contender> contenders = {
      {"here, in one text", [&] { keep(platform::writeXmlPropertyList(sample.value)); }},
      {"here, in pieces", [&] { keep(platform::writeXmlPropertyListPieces(sample.value)); }},
      {"memcpy into fresh memory",
       [&] {
         const std::unique_ptr<char[]> fresh(new char[sample.xml.size()]);
         std::memcpy(fresh.get(), sample.xml.data(), sample.xml.size());
         keep(fresh[0]);
       }},
      {"memcpy into memory again",
       [&] {
         copy.assign(sample.xml);
         keep(copy);
       }},
      {"libplist", [&] {
         char* text = nullptr;
         std::uint32_t size = 0;
         plist_to_xml(list, &text, &size);
         plist_to_xml_free(text);
       }}};
  addGNUstepWrite(contenders, sample.xml);
  measure("write " + sample.name + " XML", contenders);
  plist_free(list);
}

void measureLinear() {
  std::printf("\nwide XML by number of keys\n");
  for (const std::size_t keys : {20'000U, 200'000U, 2'000'000U}) {
    const std::string xml = platform::writeXmlPropertyList(widePreferences(keys)).bytes;
    const auto timing = race({{"here", [&] { keep(parse(xml)); }}}, 1.0, 7);
    std::printf("  %8zu keys  best %s  %.1f ns a key\n", keys, inUnits(timing[0].best).c_str(),
                timing[0].best * 1e9 / static_cast<double>(keys));
  }
}

void run(std::string_view which) {
  const auto wanted = [which](std::string_view name) { return which.empty() || which == name; };
  const std::vector<Sample> all = samples();
  for (const Sample& sample : all) {
    if (wanted("parse")) measureParse(sample);
    if (wanted("binary")) measureBinary(sample);
  }
  if (wanted("image")) measureImage(all[1]);
  for (const Sample& sample : {all[0], all[1]}) {
    if (wanted("write")) measureWrite(sample);
  }
  if (wanted("linear")) measureLinear();
}

}  // namespace
}  // namespace benchmarks

int main(int count, char** arguments) {
  benchmarks::run(count > 1 ? arguments[1] : "");
  return 0;
}
