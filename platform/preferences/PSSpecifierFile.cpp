#include "platform/preferences/PSSpecifierFile.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/preferences/PSItemRules.h"
#include "platform/preferences/PSSpecifierItem.h"

namespace platform {

namespace {

PSSpecifierFile refused(std::string problem) {
  PSSpecifierFile file;
  file.problem = std::move(problem);
  return file;
}

void readTitle(PSSpecifierFile& file, const Dictionary& root, const std::string& fileName) {
  const Value title = root.valueForKey("title");
  file.title = title.text();
  if (title && !file.title) {
    file.specifiers.push_back(problemSpecifier(
        {}, fileName + ": \"title\" must be a string, not " + kindForPeople(title)));
  }
}

}  // namespace

PSSpecifierFile readSpecifierFile(const std::optional<std::string>& name,
                                  const std::optional<std::string>& bundlePath,
                                  const std::shared_ptr<Object>& target) {
  if (!name) return refused("The page has no specifier list: it has no name.");
  const std::string fileName = *name + ".plist";
  if (!bundlePath) return refused(fileName + " cannot be found: the page has no bundle.");
  std::string reason;
  const auto root = dictionaryWithContentsOfFile(*bundlePath + "/" + fileName, &reason);
  if (!root) return refused(fileName + " cannot be loaded: " + reason);
  const Value items = root->valueForKey("items");
  if (!items) return refused(fileName + ": \"items\" is missing (expected an array)");
  if (!items.asArray()) {
    return refused(fileName + ": \"items\" must be an array, not " + kindForPeople(items));
  }
  PSSpecifierFile file;
  readTitle(file, *root, fileName);
  PSItemContext context{fileName, 0, *bundlePath, target};
  for (const Value& item : *items.asArray()) {
    ++context.row;
    auto made = specifiersFromItem(item, context);
    std::ranges::move(made, std::back_inserter(file.specifiers));
  }
  return file;
}

}  // namespace platform
