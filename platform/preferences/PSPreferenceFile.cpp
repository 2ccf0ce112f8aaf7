#include "platform/preferences/PSPreferenceFile.h"

#include <utility>

#include "platform/foundation/files/FileSystem.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/propertylist/PropertyList.h"

namespace platform {

namespace {

// A domain is a file name; it never leads to another folder.
std::optional<std::string> pathOfDomain(const std::string& domain) {
  if (domain.empty() || domain.find('/') != std::string::npos) return std::nullopt;
  return "/var/jb/var/mobile/Library/Preferences/" + domain + ".plist";
}

}  // namespace

Value valueInDomain(const std::string& domain, const std::string& key) {
  const auto path = pathOfDomain(domain);
  if (!path) return {};
  const auto entries = dictionaryWithContentsOfFile(*path);
  return entries ? entries->valueForKey(key) : Value();
}

std::optional<std::string> setValueInDomain(const std::string& domain, const std::string& key,
                                            const Value& value) {
  const auto path = pathOfDomain(domain);
  if (!path) return "\"" + domain + "\" is not a preference domain";
  std::string problem;
  auto entries = dictionaryWithContentsOfFile(*path, &problem);
  if (!entries && Process::current().service<FileSystem>().attributesOfItem(*path)) return problem;
  const Dictionary changed = std::move(entries).value_or(Dictionary()).with(key, value);
  if (!writeToFileAtomically(changed, *path, &problem)) return problem;
  return std::nullopt;
}

}  // namespace platform
