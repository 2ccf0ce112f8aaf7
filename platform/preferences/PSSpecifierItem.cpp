#include "platform/preferences/PSSpecifierItem.h"

#include <utility>

#include "platform/preferences/PSItemRules.h"
#include "platform/uikit/images/UIImage.h"

namespace platform {

namespace {

constexpr const char* defaultGetter = "readPreferenceValue:";
constexpr const char* defaultSetter = "setPreferenceValue:specifier:";

std::optional<std::string> textOf(const Dictionary& item, std::string_view key) {
  return item.valueForKey(key).text();
}

std::string originOf(const PSItemContext& context) {
  return context.file + ", row " + std::to_string(context.row);
}

std::string originOf(const PSItemContext& context, const std::optional<std::string>& name) {
  return name ? originOf(context) + " (\"" + *name + "\")" : originOf(context);
}

void loadIcon(PSSpecifier& specifier, const Dictionary& item, const std::string& bundlePath) {
  const auto icon = textOf(item, "icon");
  if (!icon) return;
  if (const auto image = UIImage::imageWithContentsOfFile(bundlePath + "/" + *icon)) {
    specifier.setProperty(Value(image), "iconImage");
  }
}

std::shared_ptr<PSSpecifier> soundSpecifier(const Dictionary& item, const PSItemContext& context) {
  const auto type = *cellTypeNamed(*item.valueForKey("cell").asString());
  const auto set = textOf(item, "set").value_or(defaultSetter);
  const auto get = textOf(item, "get").value_or(defaultGetter);
  auto specifier = PSSpecifier::preferenceSpecifierNamed(textOf(item, "label"), context.target, set,
                                                         get, textOf(item, "detail"), type, {});
  specifier->setProperties(std::make_shared<MutableDictionary>(item));
  specifier->setButtonAction(textOf(item, "action"));
  specifier->setOrigin(originOf(context, textOf(item, "label")));
  loadIcon(*specifier, item, context.bundlePath);
  return specifier;
}

// The replacement for an item with a problem. The row keeps its identifier, and a group still
// starts its section.
PSSpecifierList refusedItem(const Dictionary& item, const PSItemContext& context,
                            const std::string& problem) {
  const auto name = textOf(item, "label");
  const auto row = problemSpecifier(name, originOf(context, name) + ": " + problem);
  if (item.valueForKey("cell") == Value("PSGroupCell")) {
    const auto group = PSSpecifier::groupSpecifierWithName(name);
    group->setIdentifier(textOf(item, "id"));
    return {group, row};
  }
  row->setIdentifier(textOf(item, "id"));
  if (const auto key = textOf(item, "key")) row->setProperty(*key, "key");
  return {row};
}

}  // namespace

std::shared_ptr<PSSpecifier> problemSpecifier(const std::optional<std::string>& name,
                                              const std::string& problem) {
  auto row = PSSpecifier::preferenceSpecifierNamed(name, nullptr, {}, {}, {}, PSStaticTextCell, {});
  row->setProperty(false, "enabled");
  row->setProblem(problem);
  return row;
}

PSSpecifierList specifiersFromItem(const Value& item, const PSItemContext& context) {
  const Dictionary* entries = item.asDictionary();
  if (!entries) {
    const std::string problem = "must be a dictionary, not " + kindForPeople(item);
    return {problemSpecifier(std::nullopt, originOf(context) + ": " + problem)};
  }
  auto problem = problemOfItemValues(*entries);
  if (!problem) problem = problemOfItemReferences(*entries, context.target.get());
  if (problem) return refusedItem(*entries, context, *problem);
  return {soundSpecifier(*entries, context)};
}

}  // namespace platform
